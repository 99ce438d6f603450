/* nqerr: numbered error handlers with thresholds, output streams, prefixes,
 * callbacks and message queues, plus the timing and deprecation log built on
 * them. Usable from C and C++. */
#ifndef NQERR_H
#define NQERR_H

#include <stdarg.h>
#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Severity levels; a handler prints a message whose level is at least its own. */
enum {
    NQERR_BUMMER = 0,
    NQERR_OK = 1,
    NQERR_DEBUG = 2,
    NQERR_INFO = 3,
    NQERR_WARNING = 4,
    NQERR_FATAL = 5,
    NQERR_OFF = 6
};

/* Handle -1 is the default handler, which always exists. */
#define NQERR_DEFAULT_HANDLER (-1)

typedef int (*nqerr_callback)(const char* message);

/* All functions return 1 on success and 0 on failure unless stated otherwise. */
int nqerr_initialize(void);
int nqerr_terminate(void);
int nqerr_refcount(void); /* the count of outstanding initialisations */
int nqerr_new(int* handle);
int nqerr_delete(int handle);
int nqerr_level(int handle, unsigned int level);
int nqerr_get_level(int handle, unsigned int* level);
int nqerr_file(int handle, FILE* stream);
void nqerrf_file_(int* handle, int* unit, int* status);
int nqerr_window(int handle, nqerr_callback callback);
int nqerr_maxlevel(int handle, unsigned int* level);
int nqerr_errclear(int handle);
int nqerr_queue_on(int handle, int on);
int nqerr_get_queue_on(int handle, int* on);
int nqerr_queue_get(int handle, char** text); /* caller frees *text with free() */
int nqerr_prefix(int handle, const char* text);
int nqerr_suppress_print(int handle);
int nqerr_restore_print(int handle);
int nqerr_print_state(int handle, int* state);
const char* nqerr_return_code(unsigned int level);
int nqerr_get_named_handler(const char* name, int* handle);
int nqerr_throw(int handle, unsigned int level, const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 3, 4)))
#endif
    ;
int nqerr_vthrow(int handle, unsigned int level, const char* format, va_list args);

/* Timing and deprecation log. */
int nqlog_deprecation_warning(const char* file, int line, const char* function, const char* format, ...);
int nqlog_set_timing_output(int enable);
int nqlog_timing_info(const char* file, int line, const char* message);
int nqerr_get_timing_handler(int* handle);

#ifdef __cplusplus
}
#endif

#endif /* NQERR_H */
