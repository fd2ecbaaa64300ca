// Qt starts programs by clone() with CLONE_VM: until the child has become the program it shares the memory of
// the thread that starts it. ThreadSanitizer's own clone() switches its checks off in the child, and so in
// that thread too, for good; what the thread does later then looks unsynchronised. This one, which the
// dynamic linker finds first, is the C library's.
#ifdef __SANITIZE_THREAD__

#include <cstdarg>
#include <sys/types.h>

extern "C" {

int __clone(int (*)(void *), void *, int, void *, ...);  // NOLINT: the C library's name

int clone(int (*function)(void *), void *stack, int flags, void *argument, ...) {
    va_list more;
    va_start(more, argument);
    pid_t *const parentTid = va_arg(more, pid_t *);
    void *const tls = va_arg(more, void *);
    pid_t *const childTid = va_arg(more, pid_t *);
    va_end(more);
    return __clone(function, stack, flags, argument, parentTid, tls, childTid);
}

}  // extern "C"

#endif
