#pragma once

#include <concepts>
#include <utility>

#include "platform/runtime/Exceptions.h"
#include "platform/runtime/String.h"

namespace zelto {

// A reference-counted object, destroyed with its last reference. Not thread-safe.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  // Called by RuntimeNewObject after the C++ constructor.
  virtual void Init() {}

 private:
  template <class T>
  friend class Ref;

  Int32 mLocks = 0;
};

[[noreturn]] inline void RaiseNilObjectException() { throw NilObjectException(); }

// A reference to an object, or nil. Access through nil throws NilObjectException.
template <class T>
class Ref {
 public:
  using Target = T;

  Ref() = default;
  Ref(std::nullptr_t) {}
  explicit Ref(T* object) : mObject(object) { Lock(); }
  Ref(const Ref& other) : mObject(other.mObject) { Lock(); }
  Ref(Ref&& other) noexcept : mObject(std::exchange(other.mObject, nullptr)) {}
  template <std::derived_from<T> U>
  Ref(const Ref<U>& other) : mObject(other.Get()) {
    Lock();
  }
  Ref& operator=(Ref other) noexcept {
    std::swap(mObject, other.mObject);
    return *this;
  }
  ~Ref() {
    if (mObject && --mObject->mLocks == 0) delete mObject;
  }

  explicit operator bool() const { return mObject != nullptr; }
  T* Get() const { return mObject; }
  T& operator*() const {
    if (!mObject) RaiseNilObjectException();
    return *mObject;
  }
  T* operator->() const { return &**this; }

  // Compares identity, not content.
  template <class U>
  bool operator==(const Ref<U>& other) const {
    return static_cast<const Object*>(mObject) == static_cast<const Object*>(other.Get());
  }

 private:
  void Lock() {
    if (mObject) ++mObject->mLocks;
  }

  T* mObject = nullptr;
};

template <class T>
Ref<T> RuntimeNewObject() {
  Ref<T> object(new T);
  object->Init();
  return object;
}

template <class T, class U>
bool RuntimeObjectIsa(const Ref<U>& object) {
  return dynamic_cast<T*>(object.Get()) != nullptr;
}

// Casts the object to T. Nil stays nil. Throws IllegalCastException for an object of another class.
template <class T, class U>
Ref<T> RuntimeCheckCast(const Ref<U>& object) {
  if (object && !RuntimeObjectIsa<T>(object)) throw IllegalCastException();
  return Ref<T>(dynamic_cast<T*>(object.Get()));
}

}  // namespace zelto
