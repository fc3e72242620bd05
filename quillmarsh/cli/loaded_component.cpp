#include "quillmarsh/cli/loaded_component.h"

#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"

namespace quillmarsh {
namespace {

constexpr const char* kAdvice =
    "; 'quillmarsh register' registers the component of this program in its place, 'quillmarsh "
    "unregister' forgets it";

}  // namespace

vetlo::Component LoadComponent() {
  bool registered = true;  // as long as the registry does not say otherwise
  try {
    const vetlo::ComponentPlace place = vetlo::FindComponentLibrary();
    registered = place.registered;
    return vetlo::Component(place.file);
  } catch (const vetlo::RegistryError& error) {
    throw UserError(SafeText(error.what()));
  } catch (const vetlo::ComponentError& error) {
    throw UserError(SafeText(error.what()) + (registered ? kAdvice : ""));
  }
}

}  // namespace quillmarsh
