#pragma once

#include <atomic>
#include <cstdint>

#include "vetlo/surface/unknown.h"

namespace vetlo {

// What keeps the library loaded: its objects, and the locks of its hosts.
class Module {
 public:
  void Hold() { ++holds_; }
  void LetGo() { --holds_; }
  void Lock() { ++locks_; }
  // False where there is no lock to take off.
  bool Unlock() {
    std::int64_t locks = locks_;
    while (locks > 0 && !locks_.compare_exchange_weak(locks, locks - 1)) {
    }
    return locks > 0;
  }
  [[nodiscard]] bool InUse() const { return holds_ != 0 || locks_ != 0; }

 private:
  std::atomic<std::int64_t> holds_ = 0;
  std::atomic<std::int64_t> locks_ = 0;
};

Module& TheModule();

// An object that goes with the last reference to it. It begins with one reference, its maker's.
class CountedObject {
 public:
  CountedObject() { TheModule().Hold(); }
  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;

  std::uint32_t AddReference() { return ++references_; }
  std::uint32_t ReleaseReference() {
    const std::uint32_t left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

 protected:
  virtual ~CountedObject() { TheModule().LetGo(); }

 private:
  std::atomic<std::uint32_t> references_ = 1;
};

// Hands out an interface of a new object, which goes again where it does not have that interface.
template <typename Object>
HRESULT HandOut(Object* made, const GUID& iid, void** object) noexcept {
  if (made == nullptr) {
    return E_OUTOFMEMORY;
  }
  const HRESULT result = made->QueryInterface(iid, object);
  made->Release();
  return result;
}

}  // namespace vetlo
