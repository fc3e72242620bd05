#pragma once

#include <dlfcn.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "vetlo/host/component.h"
#include "vetlo/surface/tamo_interface.h"

namespace vetlo::testing {

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

// An interface that is released with its holder.
template <typename Interface>
using Held = std::unique_ptr<Interface, Releaser>;

// Whether a library's file is loaded into this process.
inline bool IsLoaded(const std::string& file) {
  void* const handle = dlopen(file.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (handle != nullptr) {
    dlclose(handle);
  }
  return handle != nullptr;
}

// The component's library and its entry points, as any host would come to them.
class OpenedLibrary {
 public:
  explicit OpenedLibrary(const std::string& file = LibraryBesideProgram())
      : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
      throw std::runtime_error(dlerror());
    }
    Find(register_server, "DllRegisterServer");
    Find(unregister_server, "DllUnregisterServer");
    Find(get_class_object, "DllGetClassObject");
    Find(can_unload_now, "DllCanUnloadNow");
  }
  ~OpenedLibrary() { dlclose(handle_); }
  OpenedLibrary(const OpenedLibrary&) = delete;
  OpenedLibrary& operator=(const OpenedLibrary&) = delete;

  template <typename Interface>
  [[nodiscard]] Held<Interface> ClassObject(const GUID& iid) const {
    void* object = nullptr;
    const HRESULT result = get_class_object(&CLSID_clsTamo, &iid, &object);
    return Checked<Interface>(result, object);
  }
  [[nodiscard]] Held<IClassFactory> Factory() const {
    return ClassObject<IClassFactory>(IID_IClassFactory);
  }
  [[nodiscard]] Held<_clsTamo> NewTamo() const {
    void* object = nullptr;
    const HRESULT result = Factory()->CreateInstance(nullptr, IID__clsTamo, &object);
    return Checked<_clsTamo>(result, object);
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
      throw std::runtime_error(name);
    }
  }
  template <typename Interface>
  static Held<Interface> Checked(HRESULT result, void* object) {
    if (result != S_OK || object == nullptr) {
      throw std::runtime_error("no object");
    }
    return Held<Interface>(static_cast<Interface*>(object));
  }

  void* handle_;
};

// Another interface of an object; null where it has none.
template <typename Interface>
Held<Interface> Asked(IUnknown& object, const GUID& iid) {
  void* other = nullptr;
  return Held<Interface>(object.QueryInterface(iid, &other) == S_OK ? static_cast<Interface*>(other)
                                                                    : nullptr);
}

}  // namespace vetlo::testing
