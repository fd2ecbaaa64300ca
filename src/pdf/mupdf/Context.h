#pragma once

#include "pdf/MemoryBudget.h"
#include "pdf/PDFError.h"

#include <mupdf/fitz.h>

#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>

namespace leafwright::mupdf {

/// An error that MuPDF threw, as a C++ exception.
class Error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What went wrong is not the file's fault: the system would not read it, or memory ran out. What has been
/// read is then part of what there is; to go on as if the rest were broken or absent would lose it.
class ReadProblem : public Error {
public:
    explicit ReadProblem(const PDFError &problem)
        : Error(problem.message.toStdString()), kind_(problem.kind) {}

    PDFError problem() const { return {kind_, QString::fromUtf8(what())}; }

private:
    PDFError::Kind kind_;
};

/// Throws the error that MuPDF is catching as a ReadProblem if it is one, else as an Error.
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
    /// Throws ReadProblem where there is no memory for it.
    /// @param budget what the context's memory counts on, beside its own limit
    explicit Context(std::shared_ptr<MemoryBudget> budget = std::make_shared<MemoryBudget>());
    ~Context();
    Context(const Context &) = delete;
    Context &operator=(const Context &) = delete;

    // NOLINTNEXTLINE(google-explicit-constructor): stands in for the pointer in MuPDF's functions
    operator fz_context *() const { return ctx_; }

    /// The context that MuPDF's pointer stands for.
    static Context &of(fz_context *ctx) { return *static_cast<Context *>(fz_user_context(ctx)); }

    /// Remembers that the system would not read the file. Trivial, for use among MuPDF's calls.
    /// @param reason the number of the system's error, or `cutShort`
    void noteReadFailure(int reason) { readFailure_ = reason; }
    /// The same of memory of our own that ran out.
    void noteOutOfMemory() { outOfMemory_ = true; }
    /// The same of a page that was given up. @param number of the page, 1-based
    void noteSlowPage(int number) { slowPage_ = number; }
    /// Why something could not be read in this context that is there; MuPDF may have passed over it. A
    /// context that has met such a problem may hold what is not in the file, and is not to be used much
    /// longer.
    std::optional<PDFError> problem() const;
    /// Throws the problem if there is one.
    void throwProblem() const;

private:
    /// The context's allocator; it has no other heap.
    class Heap {
    public:
        explicit Heap(std::shared_ptr<MemoryBudget> budget) : budget_(std::move(budget)) {}
        ~Heap() { budget_->giveBack(reserved_); }
        Heap(const Heap &) = delete;
        Heap &operator=(const Heap &) = delete;

        static void *allocate(void *heap, size_t size);
        static void *reallocate(void *heap, void *block, size_t size);
        static void release(void *heap, void *block);
        /// Whether MuPDF asked for memory in vain.
        bool isExhausted() const { return exhausted_ || refused_ != 0; }
        /// Why it was in vain the last time.
        PDFError error() const;

    private:
        enum class Shortage { OfBudget, OfSystem };

        bool reserve(size_t more);
        void *refuse(size_t size, Shortage shortage);
        void grant(size_t size);

        std::shared_ptr<MemoryBudget> budget_;
        size_t inUse_ = 0;
        size_t reserved_ = 0;  ///< Taken from the budget.
        size_t refused_ = 0;   ///< The size last asked for in vain, until it is known whether that mattered.
        bool exhausted_ = false;
        Shortage shortage_ = Shortage::OfSystem;
    };

    Heap heap_;
    int readFailure_ = 0;
    bool outOfMemory_ = false;
    int slowPage_ = 0;  ///< Its number; 0 for none.
    fz_context *ctx_;
};

/// The reason for a read that found less than the file had when it was opened.
constexpr int cutShort = -1;

/// The error of a file that the system would not read. @param reason its error number, or `cutShort`
PDFError readFailureError(int reason);
/// The error where the system has no memory left.
PDFError outOfMemoryError();
/// The error of a file that takes more memory than one may.
PDFError tooMuchMemoryError();
/// The error of a page whose text takes too long. @param number of the page, 1-based
PDFError slowPageError(int number);

}  // namespace leafwright::mupdf
