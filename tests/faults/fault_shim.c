/* Loaded before the C library: calls of a host on one file fail as a full or broken disk lets them
 * fail, and large pieces of memory are not to be had.
 *
 * FAULT_FILE    what the name of the file ends in
 * FAULT_CALL    open, close, seek: the call that fails; read, write: bytes are counted, and of the call
 *               that exceeds them none is written, as on a broken disk; size: a write is cut where it
 *               would make the file longer than that, and the next one fails, as on a full disk
 * FAULT_AT      how many calls, or bytes, go well before that (0)
 * FAULT_TIMES   how many calls then fail before all is well again (all of them)
 * FAULT_ERRNO   the error; 0: a write takes no byte and names no error
 * FAULT_PIECE   all goes well, but a write takes so many bytes at most and is interrupted in between
 * FAULT_MALLOC  from so many bytes on there is no memory
 * FAULT_NEW     a C++ library gets so many pieces of memory, and FAULT_TIMES then not */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

enum { kDescriptors = 1024 };

void* __libc_malloc(size_t size);

static const char* file = "";
static const char* failing_call = "";
static long long at, times = LLONG_MAX, piece, largest = LLONG_MAX, pieces = LLONG_MAX;
static int error;

static unsigned char is_the_file[kDescriptors];
static long long done, failures;
static int interrupted;

static long long setting(const char* name, long long otherwise) {
  const char* value = getenv(name);
  return value != NULL ? atoll(value) : otherwise;
}

__attribute__((constructor)) static void read_settings(void) {
  if (getenv("FAULT_FILE") != NULL) file = getenv("FAULT_FILE");
  if (getenv("FAULT_CALL") != NULL) failing_call = getenv("FAULT_CALL");
  at = setting("FAULT_AT", 0);
  times = setting("FAULT_TIMES", LLONG_MAX);
  error = (int)setting("FAULT_ERRNO", 0);
  piece = setting("FAULT_PIECE", 0);
  largest = setting("FAULT_MALLOC", LLONG_MAX);
  pieces = setting("FAULT_NEW", LLONG_MAX);
}

static int concerns(int descriptor, const char* call) {
  return strcmp(call, failing_call) == 0 && failures < times && descriptor >= 0 &&
         descriptor < kDescriptors && is_the_file[descriptor];
}

static int fail(void) {
  ++failures;
  errno = error;
  return error == 0 ? 0 : -1;
}

/* For calls that are counted one by one. */
static int fails_now(int descriptor, const char* call) {
  return concerns(descriptor, call) && done++ >= at;
}

int open(const char* path, int flags, ...) {
  const size_t length = strlen(path), end = strlen(file);
  const int matches = end > 0 && length >= end && strcmp(path + length - end, file) == 0;
  if (matches && strcmp("open", failing_call) == 0 && failures < times && done++ >= at)
    return fail();
  va_list arguments;
  va_start(arguments, flags);
  const int mode = (flags & O_CREAT) != 0 ? va_arg(arguments, int) : 0;
  va_end(arguments);
  const int descriptor = (int)syscall(SYS_openat, AT_FDCWD, path, flags, mode);
  if (descriptor >= 0 && descriptor < kDescriptors)
    is_the_file[descriptor] = (unsigned char)matches;
  return descriptor;
}

int close(int descriptor) {
  const int fails = fails_now(descriptor, "close");
  if (descriptor >= 0 && descriptor < kDescriptors) is_the_file[descriptor] = 0;
  const int result = (int)syscall(SYS_close, descriptor); /* closed all the same, as on Linux */
  return fails ? fail() : result;
}

off_t lseek(int descriptor, off_t offset, int whence) {
  if (fails_now(descriptor, "seek")) return fail();
  return (off_t)syscall(SYS_lseek, descriptor, offset, whence);
}

static size_t least(size_t a, long long b) {
  return (long long)a < b ? a : (size_t)b;
}

ssize_t read(int descriptor, void* bytes, size_t count) {
  if (concerns(descriptor, "read")) {
    if (done >= at) return fail();
    count = least(count, at - done);
    done += (long long)count;
  }
  return syscall(SYS_read, descriptor, bytes, count);
}

ssize_t write(int descriptor, const void* bytes, size_t count) {
  if (piece > 0 && descriptor < kDescriptors && is_the_file[descriptor]) {
    interrupted = !interrupted;
    if (interrupted) {
      errno = EINTR;
      return -1;
    }
    count = least(count, piece);
  }
  if (count > 0 && concerns(descriptor, "write")) {
    if (done + (long long)count > at) return fail();
    done += (long long)count;
  }
  if (count > 0 && concerns(descriptor, "size")) {
    const long long from = syscall(SYS_lseek, descriptor, 0L, SEEK_CUR);
    if (from >= at) return fail();
    count = least(count, at - from); /* what still fits is taken, the next call fails */
  }
  return syscall(SYS_write, descriptor, bytes, count);
}

void* malloc(size_t size) {
  if (size <= LLONG_MAX && (long long)size < largest) return __libc_malloc(size);
  errno = ENOMEM;
  return NULL;
}

/* Operator new: the real one throws what it throws when there is no memory. */
void* _Znwm(size_t size) {
  static void* (*real)(size_t);
  if (real == NULL) *(void**)&real = dlsym(RTLD_NEXT, "_Znwm");
  if (pieces-- > 0 || failures++ >= times) return real(size);
  return real((size_t)-1);
}
