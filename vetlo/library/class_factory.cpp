#include "vetlo/library/class_factory.h"

#include <new>

#include "vetlo/library/tamo_object.h"
#include "vetlo/library/version.h"

namespace vetlo {

HRESULT TamoFactory::QueryInterface(const GUID& iid, void** object) noexcept {
  if (object == nullptr) {
    return E_POINTER;
  }
  if (iid == IID_IUnknown || iid == IID_IClassFactory) {
    *object = static_cast<IClassFactory*>(this);
  } else if (iid == IID_ILibraryInfo) {
    *object = static_cast<ILibraryInfo*>(this);
  } else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

HRESULT TamoFactory::CreateInstance(IUnknown* outer, const GUID& iid, void** object) noexcept {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (outer != nullptr) {
    return CLASS_E_NOAGGREGATION;
  }
  return HandOut(new (std::nothrow) TamoObject, iid, object);
}

HRESULT TamoFactory::LockServer(bool lock) noexcept {
  if (lock) {
    TheModule().Lock();
    return S_OK;
  }
  return TheModule().Unlock() ? S_OK : E_UNEXPECTED;
}

HRESULT TamoFactory::GetFacts(LibraryFacts* facts) noexcept {
  if (facts == nullptr) {
    return E_POINTER;
  }
  *facts = kLibraryFacts;
  return S_OK;
}

}  // namespace vetlo
