// The owner type for handles that must be closed, freed or destroyed. The traits define the handle type and how to
// release it:
//
//     struct Traits {
//         using Handle = HKEY;
//         static constexpr Handle kNone = nullptr;
//         static void close(Handle handle);
//     };
#pragma once

namespace tamrix {

template <class Traits>
class UniqueHandle {
public:
    using Handle = typename Traits::Handle;

    UniqueHandle() = default;
    explicit UniqueHandle(Handle handle) : handle_(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : handle_(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        reset(other.release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { reset(); }

    Handle get() const { return handle_; }
    explicit operator bool() const { return handle_ != Traits::kNone; }

    /// Closes the current handle and returns the address at which a platform call can store a new one.
    Handle* receive() {
        reset();
        return &handle_;
    }

    /// Passes ownership of the handle to the caller.
    [[nodiscard]] Handle release() {
        const Handle handle = handle_;
        handle_ = Traits::kNone;
        return handle;
    }

    void reset(Handle handle = Traits::kNone) {
        const Handle old = handle_;
        handle_ = handle;
        if (old != Traits::kNone && old != handle) Traits::close(old);
    }

private:
    Handle handle_ = Traits::kNone;
};

}  // namespace tamrix
