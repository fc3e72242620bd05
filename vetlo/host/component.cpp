#include "vetlo/host/component.h"

#include <dlfcn.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "vetlo/registry/component_registry.h"
#include "vetlo/registry/trusted_file.h"
#include "vetlo/surface/result_codes.h"

namespace vetlo {
namespace {

// The loader would look a bare name up elsewhere, and take no name for the program itself. A
// library registers the name that it was loaded by.
std::string AbsoluteFile(const std::string& file) {
  std::error_code error;
  const auto absolute = std::filesystem::absolute(file, error);
  if (error) {
    throw ComponentError("the component '" + file + "' cannot be loaded: " + error.message());
  }
  return absolute.string();
}

}  // namespace

// The entry points of a library. It is closed with its last user, unless it wants to stay.
class LoadedLibrary {
 public:
  explicit LoadedLibrary(const std::string& file)
      : file_(AbsoluteFile(file)), handle_(dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
      throw ComponentError("the component " + file_ + " cannot be loaded: " + dlerror());
    }
    try {
      Find(register_server, "DllRegisterServer");
      Find(unregister_server, "DllUnregisterServer");
      Find(get_class_object, "DllGetClassObject");
      Find(can_unload_now, "DllCanUnloadNow");
    } catch (const ComponentError&) {
      dlclose(handle_);
      throw;
    }
  }
  ~LoadedLibrary() {
    if (can_unload_now() == S_OK) {
      dlclose(handle_);
    }
  }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  void Require(HRESULT result) const {
    if (Failed(result)) {
      throw ComponentError("the component " + file_ + " cannot be used: " + ResultText(result));
    }
  }

  DllRegisterServerFunction* register_server = nullptr;
  DllUnregisterServerFunction* unregister_server = nullptr;
  DllGetClassObjectFunction* get_class_object = nullptr;
  DllCanUnloadNowFunction* can_unload_now = nullptr;

 private:
  template <typename Function>
  void Find(Function*& entry_point, const char* name) {
    entry_point = reinterpret_cast<Function*>(dlsym(handle_, name));
    if (entry_point == nullptr) {
      throw ComponentError(file_ + " is no component: it has no " + name);
    }
  }

  std::string file_;
  void* handle_;
};

namespace {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

// An interface that is released with its holder.
template <typename Interface>
using Held = std::unique_ptr<Interface, Releaser>;

// The interface that an operation hands out.
template <typename Interface, typename Operation>
Held<Interface> HandedOut(const LoadedLibrary& library, const Operation& operation) {
  void* object = nullptr;
  library.Require(operation(&object));
  return Held<Interface>(static_cast<Interface*>(object));
}

template <typename Interface>
Held<Interface> FactoryAs(const LoadedLibrary& library, const GUID& iid) {
  return HandedOut<Interface>(library, [&](void** object) {
    return library.get_class_object(&CLSID_clsTamo, &iid, object);
  });
}

std::optional<ComponentRecord> RegisteredComponent() {
  const std::string what = "the registry of components";
  try {
    return FindComponent(RegistryFile(), GuidText(CLSID_clsTamo));
  } catch (const NotTrusted& error) {
    throw RegistryError(what + " " + RegistryFile() + " is not used: " + error.what() +
                        " (HOME or XDG_DATA_HOME says where it lies)");
  } catch (const std::system_error& error) {
    throw RegistryError(what + ": " + error.what());
  }
}

// One that is not there is the loader's to tell of.
void RequireTrustedLibrary(const std::string& file) {
  constexpr std::int64_t kMostBytes = 1 << 30;
  try {
    OpenTrusted(file, kMostBytes);
  } catch (const std::system_error& error) {
    throw ComponentError("the registered component " + file + " is not loaded: " + error.what());
  }
}

}  // namespace

std::string LibraryBesideProgram() {
  std::error_code error;
  const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) {
    throw ComponentError("cannot tell where this program is: " + error.message());
  }
  return (program.parent_path() / "libvetlo.so").string();
}

ComponentPlace FindComponentLibrary() {
  const std::string beside = LibraryBesideProgram();
  const auto record = RegisteredComponent();
  if (!record) {
    return {beside, false};
  }
  if (!record->library.starts_with('/')) {
    throw ComponentError("the registry of components " + RegistryFile() +
                         " names no absolute path for " + std::string(kTamoProgId));
  }
  // Who can change a library beside the program can change the program.
  if (record->library != beside) {
    RequireTrustedLibrary(record->library);
  }
  return {record->library, true};
}

Component::Component(const std::string& file) : library_(std::make_shared<LoadedLibrary>(file)) {
  LibraryFacts facts;
  library_->Require(FactoryAs<ILibraryInfo>(*library_, IID_ILibraryInfo)->GetFacts(&facts));
  type_library_ = facts.type_library;
  text_ = facts.text;
  version_ = facts.version;
  if (version_ != VETLO_VERSION) {
    throw ComponentError("the component " + file + " is of version " + version_ +
                         "; this program works with version " VETLO_VERSION);
  }
}

Tamo Component::NewTamo(Platform& platform) const {
  const auto factory = FactoryAs<IClassFactory>(*library_, IID_IClassFactory);
  auto tamo = HandedOut<_clsTamo>(*library_, [&](void** object) {
    return factory->CreateInstance(nullptr, IID__clsTamo, object);
  });
  const auto surroundings = HandedOut<IObjectWithPlatform>(*library_, [&](void** object) {
    return tamo->QueryInterface(IID_IObjectWithPlatform, object);
  });
  library_->Require(surroundings->SetPlatform(&platform));
  return {tamo.release(), library_, platform};
}

HRESULT Component::Register() const { return library_->register_server(); }

HRESULT Component::Unregister() const { return library_->unregister_server(); }

}  // namespace vetlo
