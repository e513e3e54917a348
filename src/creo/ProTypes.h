// What the plug-in and a Creo session have in common: result codes, handles, model types, visits. Handles are opaque
// values that may be kept; one used after its object has gone gives ProBadInputs and nothing else.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace creo {

// Results. The numbers are those that logs and callbacks show.
enum ProError : int {
  ProNoError = 0,
  ProGeneralError = -1,  // the message area has the reason
  ProBadInputs = -2,     // also: a handle whose object has gone; an external-data class or slot that exists already
  ProUserAbort = -3,
  ProNotFound = -4,
  ProExists = -5,
  ProNoGraphics = -8,
  ProNoFamtable = -12,  // no family table, or the item is in it already; nothing changed
  ProCantWrite = -17,
  ProInvalidType = -18,
  ProStopVisit = -25,        // a visit's usual stop; also "not handled"
  ProNoLicense = -40,        // Creo's option for it isn't there
  ProConflicts = -49,        // a check-out that the server refuses
  ProUnattachedFeats = -55,  // regenerated, but something lost what it was attached to
  ProRegenAgain = -56,
};

// A getter's answer: value is meaningful only when error is ProNoError.
template <class T>
struct Got {
  ProError error = ProNoError;
  T value{};
  Got() = default;
  Got(ProError e) : error(e) {}
  Got(T v) : value(std::move(v)) {}
  explicit operator bool() const { return error == ProNoError; }
};

// Of a list that isn't found where there is nothing in it: could it be told? Its value is empty then.
template <class T>
bool isTold(const Got<T>& list) {
  return list || list.error == ProNotFound;
}

// An opaque handle; 0 is none. A session packs index and generation into it, an adapter a pointer.
template <class Tag>
struct Handle {
  std::uint64_t value = 0;
  explicit operator bool() const { return value != 0; }
  auto operator<=>(const Handle&) const = default;
};
using ProMdl = Handle<struct MdlTag>;

// Creo's numbers of model types.
enum class ProMdlType : int { unused = -1, assembly = 1, part = 2, drawing = 4, format = 33, manufacturing = 37 };

// A reference to any callable, for visits: no copy, no allocation; it must not outlive the call it is given to.
template <class Signature>
class FunctionRef;
template <class R, class... Args>
class FunctionRef<R(Args...)> {
 public:
  template <class F>
  requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef> && std::is_invocable_r_v<R, F&, Args...>)
      FunctionRef(F&& f)
      : object_(const_cast<void*>(static_cast<const void*>(std::addressof(f)))),
        call_([](void* object, Args... args) -> R {
          return (*static_cast<std::remove_reference_t<F>*>(object))(std::forward<Args>(args)...);
        }) {}
  R operator()(Args... args) const { return call_(object_, std::forward<Args>(args)...); }

 private:
  void* object_;
  R (*call_)(void*, Args...);
};

// A visit walks a snapshot, stops at the first result that isn't 0 and returns it; over nothing it gives ProNotFound.
template <class Item>
using Visitor = FunctionRef<ProError(const Item&)>;

// Kinds of model items.
enum class ProItemType : int {
  none = -1,
  feature = 3,
  dimension = 8,
  crossSection = 18,
  coordinateSystem = 25,
  referenceDimension = 28,
  view = 92,
  model = 100,
  layer = 117,
  explodedState = 500,
  material = 17001,
  // Nothing shows these numbers.
  simplifiedRep = 20001,
  combinedState = 20002,
  styleState = 20003,
};
// A model or a thing in it, by id; a material by name. Models, features and materials own parameters.
struct ProModelitem {
  ProItemType type = ProItemType::none;
  int id = 0;
  ProMdl owner;
  std::wstring name;  // materials only
};

// Creo's number for model item types that serve as text: "PRT", "ASM", "DRW", "FRM", "MFG"; empty for none.
constexpr const wchar_t* typeExtension(ProMdlType type) {
  switch (type) {
    case ProMdlType::part:
      return L"PRT";
    case ProMdlType::assembly:
      return L"ASM";
    case ProMdlType::drawing:
      return L"DRW";
    case ProMdlType::format:
      return L"FRM";
    case ProMdlType::manufacturing:
      return L"MFG";
    case ProMdlType::unused:
      break;
  }
  return L"";
}

}  // namespace creo
