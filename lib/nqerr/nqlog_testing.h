/* Test seams of the timing log: a fixed clock and process id make its lines
 * and file names predictable. Not for production callers. */
#ifndef NQLOG_TESTING_H
#define NQLOG_TESTING_H

#include <time.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef void (*nqlog_clock)(time_t* seconds, long* microseconds);

/* A null clock restores the system clock. */
void nqlog_set_clock(nqlog_clock clock);
/* A pid of 0 restores the real process id. */
void nqlog_set_pid(long pid);

#ifdef __cplusplus
}
#endif

#endif /* NQLOG_TESTING_H */
