#pragma once

// Owning handles to shared objects that carry their own reference count, such as input streams.

#include <cstddef>
#include <utility>

namespace gtl {

/// How a handle owns an object that counts its references: AddReference() and ReleaseReference(),
/// which destroys the object with the last one.
struct handle_mgmt_refcounted {
    template <class T>
    static void Acquire(T* object) noexcept {
        object->AddReference();
    }
    template <class T>
    static void Release(T* object) noexcept {
        object->ReleaseReference();
    }
};

/// A reference to an object, or none (a default-constructed or moved-from handle). Copies are cheap
/// and share the object. One handle belongs to one thread at a time; the object may be shared
/// between threads when its count is atomic.
template <class T, class Management>
// NOLINTNEXTLINE(cppcoreguidelines-special-member-functions): one assignment by value serves both
class handle {
 public:
    constexpr handle() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a null handle is written as nullptr
    constexpr handle(std::nullptr_t) noexcept {}
    /// Adds a reference of its own.
    explicit handle(T* object) noexcept : object_(object) {
        if (object_ != nullptr) {
            Management::Acquire(object_);
        }
    }
    handle(const handle& other) noexcept : handle(other.object_) {}
    handle(handle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    handle& operator=(handle other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~handle() {
        if (object_ != nullptr) {
            Management::Release(object_);
        }
    }

    [[nodiscard]] T* get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    void reset() noexcept { *this = handle(); }

    friend bool operator==(const handle& a, const handle& b) noexcept {
        return a.object_ == b.object_;
    }

 private:
    T* object_ = nullptr;
};

}  // namespace gtl
