#include "quillmarsh/cli/loaded_component.h"

#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"

namespace quillmarsh {
namespace {

vetlo::Component LoadFrom(const vetlo::ComponentPlace& place) {
  try {
    return vetlo::Component(place.file);
  } catch (const vetlo::ComponentError& error) {
    if (!place.registered) {
      throw;
    }
    throw vetlo::ComponentError(
        std::string(error.what()) +
        "; it is the registered one: 'quillmarsh register' registers that of this program, "
        "'quillmarsh unregister' forgets it");
  }
}

}  // namespace

vetlo::Component LoadComponent() {
  try {
    return LoadFrom(vetlo::FindComponentLibrary());
  } catch (const vetlo::ComponentError& error) {
    throw UserError(SafeText(error.what()));
  }
}

}  // namespace quillmarsh
