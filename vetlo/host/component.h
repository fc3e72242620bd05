#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "vetlo/host/tamo.h"
#include "vetlo/surface/unknown.h"

namespace vetlo {

// The component's library can't be found, loaded or used; the text tells a user why.
class ComponentError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Where the component's library is.
struct ComponentPlace {
  std::string file;         // absolute
  bool registered = false;  // as the registry says; else it is taken from beside the program
};

// The registry of components is of no use; registering anew would not mend that.
class RegistryError : public ComponentError {
 public:
  using ComponentError::ComponentError;
};

// The library that the user has registered; without a record, the one beside the running program.
// Fails with a RegistryError where the registry can't be read, and where it could be another
// user's; with a ComponentError where the registered library could be, unless it is the one beside
// the program.
ComponentPlace FindComponentLibrary();

// The file that a library beside the running program would be.
std::string LibraryBesideProgram();

// A component's library while it is loaded. It is let go when the last Tamo of it has gone.
class Component {
 public:
  // Fails with a ComponentError, also for a library of another version than the host's.
  explicit Component(const std::string& file);

  // What the library says of itself.
  [[nodiscard]] const std::string& TypeLibrary() const { return type_library_; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  [[nodiscard]] const std::string& Version() const { return version_; }

  // The platform must outlive it. Fails with a ComponentError.
  [[nodiscard]] Tamo NewTamo(Platform& platform) const;

  // Writes the library into the user's registry of components, and takes it out.
  [[nodiscard]] HRESULT Register() const;
  [[nodiscard]] HRESULT Unregister() const;

 private:
  std::shared_ptr<LoadedLibrary> library_;
  std::string type_library_;
  std::string text_;
  std::string version_;
};

}  // namespace vetlo
