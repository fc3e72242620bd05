// The four functions that the library exports; everything else is reached through them.

#include <new>
#include <string>
#include <system_error>

#include "vetlo/library/class_factory.h"
#include "vetlo/library/module.h"
#include "vetlo/library/version.h"
#include "vetlo/registry/component_registry.h"
#include "vetlo/surface/result_codes.h"

namespace vetlo {
namespace {

ComponentRecord OwnRecord() {
  return {GuidText(CLSID_clsTamo),
          std::string(kTamoProgId),
          LibraryFileOf(reinterpret_cast<const void*>(&OwnRecord)),
          std::string(kLibraryFacts.type_library),
          std::string(kLibraryFacts.text),
          std::string(kLibraryFacts.version)};
}

bool IsDenied(const std::error_code& code) {
  return code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
         code == std::errc::read_only_file_system;
}

// Changes the registry; the answer is the result code of how that went.
template <typename Change>
HRESULT ChangeRegistry(const Change& change) noexcept {
  try {
    change();
    return S_OK;
  } catch (const std::system_error& error) {
    return IsDenied(error.code()) ? E_ACCESSDENIED : SELFREG_E_CLASS;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception&) {
    return E_UNEXPECTED;
  }
}

}  // namespace
}  // namespace vetlo

using vetlo::GUID;
using vetlo::HRESULT;

#define VETLO_EXPORT extern "C" __attribute__((visibility("default")))

VETLO_EXPORT HRESULT DllRegisterServer() {
  return vetlo::ChangeRegistry(
      [] { vetlo::WriteComponent(vetlo::RegistryFile(), vetlo::OwnRecord()); });
}

VETLO_EXPORT HRESULT DllUnregisterServer() {
  return vetlo::ChangeRegistry(
      [] { vetlo::RemoveComponent(vetlo::RegistryFile(), vetlo::GuidText(vetlo::CLSID_clsTamo)); });
}

VETLO_EXPORT HRESULT DllGetClassObject(const GUID* clsid, const GUID* iid, void** object) {
  if (object == nullptr) {
    return vetlo::E_POINTER;
  }
  *object = nullptr;
  if (clsid == nullptr || iid == nullptr) {
    return vetlo::E_POINTER;
  }
  if (!(*clsid == vetlo::CLSID_clsTamo)) {
    return vetlo::CLASS_E_CLASSNOTAVAILABLE;
  }
  return vetlo::HandOut(new (std::nothrow) vetlo::TamoFactory, *iid, object);
}

VETLO_EXPORT HRESULT DllCanUnloadNow() {
  return vetlo::TheModule().InUse() ? vetlo::S_FALSE : vetlo::S_OK;
}
