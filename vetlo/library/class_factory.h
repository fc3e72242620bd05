#pragma once

#include "vetlo/library/module.h"
#include "vetlo/surface/tamo_interface.h"

namespace vetlo {

// Makes objects of clsTamo, and tells what library makes them.
class TamoFactory final : public CountedObject, public IClassFactory, public ILibraryInfo {
 public:
  HRESULT QueryInterface(const GUID& iid, void** object) noexcept override;
  std::uint32_t AddRef() noexcept override { return AddReference(); }
  std::uint32_t Release() noexcept override { return ReleaseReference(); }

  HRESULT CreateInstance(IUnknown* outer, const GUID& iid, void** object) noexcept override;
  HRESULT LockServer(bool lock) noexcept override;

  HRESULT GetFacts(LibraryFacts* facts) noexcept override;

 private:
  ~TamoFactory() override = default;
};

}  // namespace vetlo
