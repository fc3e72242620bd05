#include "quillmarsh/cli/component_commands.h"

#include <ostream>
#include <string>
#include <system_error>

#include "quillmarsh/cli/loaded_component.h"
#include "quillmarsh/cli/user_error.h"
#include "quillmarsh/terminal/safe_text.h"
#include "vetlo/host/component.h"
#include "vetlo/registry/component_registry.h"
#include "vetlo/registry/trusted_file.h"
#include "vetlo/surface/result_codes.h"

namespace quillmarsh {
namespace {

using vetlo::Component;

// Why nothing can be written.
std::string ReasonNotToWrite(const std::string& file) {
  if (file.empty()) {
    return "there is no place for a registry of components: set HOME or XDG_DATA_HOME";
  }
  const std::string what = "cannot write the registry of components " + SafeText(file) + ": ";
  try {
    vetlo::RequireRegistryPlace(file);
  } catch (const vetlo::NotTrusted& error) {
    return what + SafeText(error.what());
  } catch (const std::system_error&) {
    // A result code has told of it already.
  }
  return what + "look whether you may write there and there is room";
}

void RequireWritten(vetlo::HRESULT result) {
  if (vetlo::Failed(result)) {
    throw UserError(ReasonNotToWrite(vetlo::RegistryFile()) + " (" + vetlo::ResultText(result) +
                    ")");
  }
}

std::string Registry() { return SafeText(vetlo::RegistryFile()); }

// Whether there is a record, of use or not.
bool IsRegistered() {
  try {
    return vetlo::FindComponent(vetlo::RegistryFile(), vetlo::GuidText(vetlo::CLSID_clsTamo))
        .has_value();
  } catch (const std::system_error& error) {
    throw UserError("the registry of components: " + SafeText(error.what()));
  }
}

}  // namespace

void RegisterCommand(std::ostream& out) {
  const std::string file = vetlo::LibraryBesideProgram();
  const Component component(file);
  RequireWritten(component.Register());
  out << "Registered " << component.Text() << ", " << SafeText(file) << ", in " << Registry()
      << "\n";
}

void UnregisterCommand(std::ostream& out) {
  const bool registered = IsRegistered();
  // The registered library may be gone; any of them takes the record out.
  RequireWritten(Component(vetlo::LibraryBesideProgram()).Unregister());
  out << (registered ? "Took the component out of " + Registry()
                     : std::string("No component was registered"))
      << "\n";
}

void ComponentCommand(std::ostream& out) {
  const Component component = LoadComponent();
  const vetlo::ComponentPlace place = vetlo::FindComponentLibrary();
  out << component.Text() << "\n"
      << "  type library  " << component.TypeLibrary() << "\n"
      << "  version       " << component.Version() << "\n"
      << "  loaded from   " << SafeText(place.file) << "\n"
      << "  found         "
      << (place.registered ? "in the registry " + Registry()
                           : std::string("beside this program; none is registered"))
      << "\n";
}

}  // namespace quillmarsh
