// A component of another version, as far as a host looks before it refuses it.

#include "vetlo/surface/tamo_interface.h"

namespace vetlo {
namespace {

class OlderFactory : public ILibraryInfo {
 public:
  HRESULT QueryInterface(const GUID& iid, void** object) noexcept override {
    *object = iid == IID_ILibraryInfo ? this : nullptr;
    return *object == nullptr ? E_NOINTERFACE : S_OK;
  }
  std::uint32_t AddRef() noexcept override { return 1; }
  std::uint32_t Release() noexcept override { return 1; }
  HRESULT GetFacts(LibraryFacts* facts) noexcept override {
    *facts = {"Vetlo", "Vetlo V3.19", "3.19"};
    return S_OK;
  }
};

}  // namespace
}  // namespace vetlo

extern "C" {

vetlo::HRESULT DllRegisterServer() { return vetlo::S_OK; }
vetlo::HRESULT DllUnregisterServer() { return vetlo::S_OK; }
vetlo::HRESULT DllCanUnloadNow() { return vetlo::S_OK; }
vetlo::HRESULT DllGetClassObject(const vetlo::GUID*, const vetlo::GUID* iid, void** object) {
  static vetlo::OlderFactory factory;
  return factory.QueryInterface(*iid, object);
}
}
