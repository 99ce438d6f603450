/* nqtoken: splits one line of text into words, with separator, quote and
 * comment characters. Usable from C and C++. */
#ifndef NQTOKEN_H
#define NQTOKEN_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct nqtoken_list nqtoken_list;

/* Functions returning int give 0 on success and non-zero on failure. */

/* Names the error handler and level for the library's own diagnostics. */
int nqtoken_initialize(int error_handler, unsigned int level);

/* Splits `line` into a new word list. Null or empty character sets mean none.
 * Fails, creating nothing, when a quoted section is not closed. The last two
 * arguments are reserved and must be 0. */
int nqtoken_new(nqtoken_list** list, const char* line, const char* separators, const char* quotes,
                const char* comments, int reserved1, int reserved2);

/* Splits `line` into an existing list, replacing its words and reusing its
 * memory, so that a caller reading many lines keeps one list. Fails as
 * nqtoken_new does; the list is then empty. */
int nqtoken_refill(nqtoken_list* list, const char* line, const char* separators, const char* quotes,
                   const char* comments);

/* The number of words; 0 for an empty or comment-only line or a null list. */
int nqtoken_num(const nqtoken_list* list);

/* The word's text without its quote characters, or null for a bad index. */
const char* nqtoken_get_token(const nqtoken_list* list, int index);

/* The length of that text in bytes (what strlen would count, without the
 * scan), or -1 for a bad index. */
int nqtoken_get_length(const nqtoken_list* list, int index);

/* The byte offset in the line at which the word starts (at its opening quote
 * for a quoted word), or -1 for a bad index. */
int nqtoken_get_offset(const nqtoken_list* list, int index);

/* The byte offset in the line just past the word (past its closing quote for
 * a word ending in a quoted section), or -1 for a bad index. The bytes from
 * the word's offset to here are the word as written. */
int nqtoken_get_end(const nqtoken_list* list, int index);

/* Stores the word's value when the whole word is an optional sign followed by
 * decimal digits within the 32-bit signed range. */
int nqtoken_get_int(const nqtoken_list* list, int index, int* value);

/* Stores the word's value when strtod in the C locale consumes the whole,
 * non-empty word. */
int nqtoken_get_double(const nqtoken_list* list, int index, double* value);

/* Releases the list; a null list is ignored. */
int nqtoken_delete(nqtoken_list* list);

#ifdef __cplusplus
}
#endif

#endif /* NQTOKEN_H */
