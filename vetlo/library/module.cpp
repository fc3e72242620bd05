#include "vetlo/library/module.h"

namespace vetlo {

Module& TheModule() {
  static Module module;
  return module;
}

}  // namespace vetlo
