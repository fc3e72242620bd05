#pragma once

#include <array>
#include <cstdint>

namespace vetlo {

// How a component of binary interfaces and its hosts speak with each other: identifiers, result
// codes, and interfaces whose objects count the references to them.

struct GUID {
  std::uint32_t data1 = 0;
  std::uint16_t data2 = 0;
  std::uint16_t data3 = 0;
  std::array<std::uint8_t, 8> data4 = {};

  friend bool operator==(const GUID&, const GUID&) = default;
};

// What an operation gives back: a code below zero is a failure.
using HRESULT = std::int32_t;

constexpr bool Failed(HRESULT result) { return result < 0; }
constexpr HRESULT ResultCode(std::uint32_t bits) { return static_cast<HRESULT>(bits); }

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOINTERFACE = ResultCode(0x80004002);
inline constexpr HRESULT E_POINTER = ResultCode(0x80004003);
inline constexpr HRESULT E_UNEXPECTED = ResultCode(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = ResultCode(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = ResultCode(0x8007000E);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = ResultCode(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = ResultCode(0x80040111);
inline constexpr HRESULT SELFREG_E_CLASS = ResultCode(0x80040201);

// The root of all interfaces. An object lives until the last reference to it is released; whoever
// is handed an interface holds a reference.
class IUnknown {
 public:
  // Hands out another interface of the object. S_OK; E_NOINTERFACE with a null for an interface
  // that the object does not have; E_POINTER where there is nowhere to put it.
  virtual HRESULT QueryInterface(const GUID& iid, void** object) noexcept = 0;
  // Both give the number of references that there are then.
  virtual std::uint32_t AddRef() noexcept = 0;
  virtual std::uint32_t Release() noexcept = 0;

 protected:
  ~IUnknown() = default;
};

inline constexpr GUID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// Makes the objects of a class.
class IClassFactory : public IUnknown {
 public:
  // There is no aggregation: `outer` is null, else CLASS_E_NOAGGREGATION.
  virtual HRESULT CreateInstance(IUnknown* outer, const GUID& iid, void** object) noexcept = 0;
  // Keeps the library loaded without an object of it. E_UNEXPECTED where there is no lock to take
  // off.
  virtual HRESULT LockServer(bool lock) noexcept = 0;

 protected:
  ~IClassFactory() = default;
};

inline constexpr GUID IID_IClassFactory = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// The entry points of a component's library, by the names under which it exports them.
using DllRegisterServerFunction = HRESULT();
using DllUnregisterServerFunction = HRESULT();
using DllGetClassObjectFunction = HRESULT(const GUID* clsid, const GUID* iid, void** object);
using DllCanUnloadNowFunction = HRESULT();

}  // namespace vetlo
