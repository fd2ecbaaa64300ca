#pragma once

#include <mupdf/fitz.h>

#include <stdexcept>
#include <type_traits>

namespace leafwright::mupdf {

/// An error that MuPDF threw, as a C++ exception.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Throws the error that MuPDF is catching as an Error.
[[noreturn]] void throwCaught(fz_context *ctx);

/// Runs `body` so that an error that MuPDF throws in it (by longjmp) comes out as an Error.
///
/// A longjmp runs no destructors: while `body` calls MuPDF, no object that needs one may live in it.
/// Nothing outside this header uses fz_try.
template <typename Body>
auto guarded(fz_context *ctx, Body &&body) {
    using Value = std::invoke_result_t<Body>;
    if constexpr (std::is_void_v<Value>) {
        fz_try(ctx) {
            body();
        }
        fz_catch(ctx) {
            throwCaught(ctx);
        }
    } else {
        static_assert(std::is_trivially_destructible_v<Value>);
        Value value{};
        fz_var(value);
        fz_try(ctx) {
            value = body();
        }
        fz_catch(ctx) {
            throwCaught(ctx);
        }
        return value;
    }
}

/// For callbacks that MuPDF calls: runs `body`, then `cleanup` in any case; an error that MuPDF throws
/// in `body` goes on as MuPDF's own. The rule about destructors holds here too.
template <typename Body, typename Cleanup>
void runThenAlways(fz_context *ctx, Body &&body, Cleanup &&cleanup) {
    fz_try(ctx) {
        body();
    }
    fz_always(ctx) {
        cleanup();
    }
    fz_catch(ctx) {
        fz_rethrow(ctx);
    }
}

/// An independent MuPDF context: a heap, store and font engine of its own, for one thread at a time.
///
/// Contexts made by fz_clone_context share a lock that every allocation takes, which makes two threads
/// slower than one; contexts of their own share nothing but what MuPDF keeps in static variables.
class Context {
public:
    Context();
    ~Context();
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    // NOLINTNEXTLINE(google-explicit-constructor): stands in for the pointer in MuPDF's functions
    operator fz_context *() const { return ctx_; }

private:
    size_t bytesInUse_ = 0;
    fz_context *ctx_;
};

}  // namespace leafwright::mupdf
