#ifndef BUKORVAL_H
#define BUKORVAL_H

/*
 * The budget object for programs in C and in whatever can call C.
 *
 *   bukorval_session *session;
 *   bukorval_object *budget;
 *   if (bukorval_open("Provider=SQLite;Data Source=demo.db", NULL, &session) != BUKORVAL_OK)
 *     puts(bukorval_error());
 *   bukorval_object_new(session, &budget);
 *
 * The object's properties and methods are reached by their names, with values in variants. A call that returns
 * BUKORVAL_OK has been made; what the object says of it stands in its properties Stato (0 done, 1 refused, 99 failed)
 * and errore.
 *
 * Every function that can fail returns one of the codes below, and bukorval_error() says why. What a function hands out
 * through its last argument is then left as it was. Text is UTF-8. A handle is freed once, by its own function, in any
 * order; freeing NULL does nothing. Threads may work at the same time, each with a session of its own.
 */

#include <stddef.h>
#include <stdint.h>

#ifdef _WIN32
#define BUKORVAL_C_API
#else
#define BUKORVAL_C_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef enum bukorval_code {
  BUKORVAL_OK = 0,
  BUKORVAL_FAILED = 1, /* at run time: no such database, a value that does not fit, no memory */
  BUKORVAL_MISUSED = 2 /* the call is wrong, and nothing has run: no such member, a text where a number is due */
} bukorval_code;

typedef struct bukorval_session bukorval_session;
typedef struct bukorval_object bukorval_object;
typedef struct bukorval_variant bukorval_variant;
typedef struct bukorval_recordset bukorval_recordset;
typedef struct bukorval_dictionary bukorval_dictionary;

/* The library's version, "0.1.0". */
BUKORVAL_C_API const char* bukorval_version(void);
/* Why the last call of this thread failed; it stays until the next that fails. */
BUKORVAL_C_API const char* bukorval_error(void);

/* ---- Sessions: a connection, and the suite's session of one company on it */

/* company: its number, or NULL for the first one stored. */
BUKORVAL_C_API bukorval_code bukorval_open(const char* connection_string, const char* company,
                                           bukorval_session** session);
/* Objects that still use the session keep its connection open. */
BUKORVAL_C_API void bukorval_close(bukorval_session* session);
/* Runs one statement. rows may be NULL; a statement that is no query gives a set without fields. */
BUKORVAL_C_API bukorval_code bukorval_execute(bukorval_session* session, const char* statement,
                                              bukorval_recordset** rows);
BUKORVAL_C_API bukorval_code bukorval_begin(bukorval_session* session);
BUKORVAL_C_API bukorval_code bukorval_commit(bukorval_session* session);
BUKORVAL_C_API bukorval_code bukorval_rollback(bukorval_session* session);
/* Where the object's messages to the user go; NULL drops them. Style 48 is a warning. */
typedef void (*bukorval_message)(void* user, const char* text, int style, const char* title);
BUKORVAL_C_API bukorval_code bukorval_messages(bukorval_session* session, bukorval_message message, void* user);

/* ---- The object */

/* An object on the session: its connection, session and company are set. */
BUKORVAL_C_API bukorval_code bukorval_object_new(bukorval_session* session, bukorval_object** object);
/* Not from its own events. */
BUKORVAL_C_API void bukorval_object_free(bukorval_object* object);
BUKORVAL_C_API bukorval_code bukorval_get(const bukorval_object* object, const char* property, bukorval_variant* value);
/* Text given for a number, here or as an argument, is read with the company's decimal sign: "1234,50". */
BUKORVAL_C_API bukorval_code bukorval_set(bukorval_object* object, const char* property, const bukorval_variant* value);
/* In/out arguments receive what the method leaves in them; optional and in/out ones at the end may be missing.
   result may be NULL. */
BUKORVAL_C_API bukorval_code bukorval_call(bukorval_object* object, const char* method,
                                           bukorval_variant* const* arguments, size_t count, bukorval_variant* result);

/* What the object tells while a long operation runs, on the thread that called it. Whatever is NULL is not told.
   What begin or step returns other than 0 stops the operation: its outcome is 99. */
typedef struct bukorval_events {
  void* user;
  int (*begin)(void* user, const char* description, int64_t steps);
  int (*step)(void* user, int64_t number); /* from 1 */
  void (*end)(void* user);                 /* also after a failure */
} bukorval_events;
/* The struct is copied; NULL ends the telling. */
BUKORVAL_C_API bukorval_code bukorval_listen(bukorval_object* object, const bukorval_events* events);

/* ---- The table of members: properties first, then methods */

typedef struct bukorval_member {
  const char* name;
  const char* signature;   /* "GetBdgNrPeriodi(MyBdgPeriodicita As BdgPeriodicita) As Variant" */
  const char* description; /* one sentence */
  int is_method;
  int readable; /* properties */
  int writable;
  size_t parameters;
} bukorval_member;

typedef struct bukorval_parameter {
  const char* name;
  const char* type; /* Variant, Integer, Long, Boolean, String, Recordset, Dictionary, or the name of an enumeration */
  int in_out;
  int optional;
} bukorval_parameter;

BUKORVAL_C_API size_t bukorval_member_count(void);
/* The texts live as long as the program. */
BUKORVAL_C_API bukorval_code bukorval_member_at(size_t place, bukorval_member* member);
BUKORVAL_C_API bukorval_code bukorval_parameter_at(size_t member, size_t place, bukorval_parameter* parameter);

/* ---- Values */

typedef enum bukorval_kind {
  BUKORVAL_EMPTY = 0, /* no value was set */
  BUKORVAL_NULL = 1,  /* the database's */
  BUKORVAL_INTEGER = 2,
  BUKORVAL_DOUBLE = 3,
  BUKORVAL_DECIMAL = 4,
  BUKORVAL_DATE = 5,
  BUKORVAL_TEXT = 6,
  BUKORVAL_BOOLEAN = 7,
  BUKORVAL_RECORDSET = 8,
  BUKORVAL_DICTIONARY = 9,
  BUKORVAL_NOTHING = 10, /* a record set, dictionary or session that is not there */
  BUKORVAL_OTHER = 11    /* a session or connection, to be handed on */
} bukorval_kind;

typedef struct bukorval_date {
  int year, month, day, hour, minute, second;
} bukorval_date;

/* An empty one; NULL when there is no memory. */
BUKORVAL_C_API bukorval_variant* bukorval_variant_new(void);
BUKORVAL_C_API void bukorval_variant_free(bukorval_variant* value);
BUKORVAL_C_API bukorval_kind bukorval_variant_kind(const bukorval_variant* value);

BUKORVAL_C_API bukorval_code bukorval_put_empty(bukorval_variant* value);
BUKORVAL_C_API bukorval_code bukorval_put_null(bukorval_variant* value);
BUKORVAL_C_API bukorval_code bukorval_put_nothing(bukorval_variant* value);
BUKORVAL_C_API bukorval_code bukorval_put_integer(bukorval_variant* value, int64_t integer);
BUKORVAL_C_API bukorval_code bukorval_put_double(bukorval_variant* value, double number);
/* "-1234.50": a point, no grouping; exact to 28 digits, beyond which it is rounded. */
BUKORVAL_C_API bukorval_code bukorval_put_decimal(bukorval_variant* value, const char* text);
BUKORVAL_C_API bukorval_code bukorval_put_date(bukorval_variant* value, const bukorval_date* date);
/* length in bytes, or SIZE_MAX for a text that ends with 0. */
BUKORVAL_C_API bukorval_code bukorval_put_text(bukorval_variant* value, const char* text, size_t length);
BUKORVAL_C_API bukorval_code bukorval_put_boolean(bukorval_variant* value, int truth);
/* The variant shares the set or dictionary with the handle. */
BUKORVAL_C_API bukorval_code bukorval_put_recordset(bukorval_variant* value, const bukorval_recordset* set);
BUKORVAL_C_API bukorval_code bukorval_put_dictionary(bukorval_variant* value, const bukorval_dictionary* dictionary);

/* A number of any kind, or text that is one, with a point; rounded to a whole number, halves to the even one. */
BUKORVAL_C_API bukorval_code bukorval_take_integer(const bukorval_variant* value, int64_t* integer);
BUKORVAL_C_API bukorval_code bukorval_take_double(const bukorval_variant* value, double* number);
BUKORVAL_C_API bukorval_code bukorval_take_boolean(const bukorval_variant* value, int* truth);
BUKORVAL_C_API bukorval_code bukorval_take_date(const bukorval_variant* value, bukorval_date* date);
/* Any value but an object as text: numbers with a point, dates as dd/mm/yyyy, "" for Empty and Null. The text ends with
   0 and lives until the variant changes. length may be NULL. */
BUKORVAL_C_API bukorval_code bukorval_take_text(bukorval_variant* value, const char** text, size_t* length);
/* New handles on what the variant refers to. */
BUKORVAL_C_API bukorval_code bukorval_take_recordset(const bukorval_variant* value, bukorval_recordset** set);
BUKORVAL_C_API bukorval_code bukorval_take_dictionary(const bukorval_variant* value, bukorval_dictionary** dictionary);

/* ---- Record sets */

typedef struct bukorval_field {
  const char* name; /* lives as long as the handle */
  int32_t type;     /* the data-access standard's number: 3 integer, 131 decimal, 135 date, 202 text ... */
  int32_t size;     /* characters of text */
  uint8_t precision, scale;
  int nullable;
} bukorval_field;

/* One field of all rows. What is not of the kind is NULL. */
typedef struct bukorval_column {
  bukorval_kind kind; /* INTEGER (decimals without decimals too), DOUBLE, DECIMAL, DATE, TEXT or BOOLEAN */
  size_t rows;
  const uint8_t* nulls;       /* 1 where there is no value; never NULL */
  const int64_t* integers;    /* INTEGER, BOOLEAN, and DECIMAL: value times 10 to the scale */
  int scale;                  /* DECIMAL */
  const double* doubles;      /* DOUBLE */
  const bukorval_date* dates; /* DATE */
  const char* text;           /* TEXT, one after the other, each with a 0 at its end */
  const size_t* offsets;      /* TEXT: where each begins in text; one more than rows */
} bukorval_column;

/* A set without fields, to be given fields and opened. */
BUKORVAL_C_API bukorval_code bukorval_recordset_new(bukorval_recordset** set);
BUKORVAL_C_API void bukorval_recordset_free(bukorval_recordset* set);
/* Whatever a set could not be opened with is refused. */
BUKORVAL_C_API bukorval_code bukorval_recordset_append(bukorval_recordset* set, const bukorval_field* field);
BUKORVAL_C_API bukorval_code bukorval_recordset_open(bukorval_recordset* set);
/* Rows that pass the set's filter. */
BUKORVAL_C_API bukorval_code bukorval_recordset_rows(const bukorval_recordset* set, size_t* rows);
BUKORVAL_C_API bukorval_code bukorval_recordset_fields(const bukorval_recordset* set, size_t* fields);
BUKORVAL_C_API bukorval_code bukorval_recordset_field(const bukorval_recordset* set, size_t place,
                                                      bukorval_field* field);
/* What the column points to lives until the same column is read again or the handle is freed. A column of decimals of
   which one does not fit in 64 bits with the field's scale, and one of mixed kinds, is TEXT, as bukorval_take_text
   gives it. */
BUKORVAL_C_API bukorval_code bukorval_recordset_column(bukorval_recordset* set, size_t place, bukorval_column* column);
/* Writes a cell; row counts from 0. One row after the other is quick. */
BUKORVAL_C_API bukorval_code bukorval_recordset_put(bukorval_recordset* set, size_t row, const char* field,
                                                    const bukorval_variant* value);
/* A row at the end, the cells in the order of the fields; all or nothing. */
BUKORVAL_C_API bukorval_code bukorval_recordset_add(bukorval_recordset* set, const bukorval_variant* const* cells,
                                                    size_t count);

/* ---- Dictionaries: keys are text or numbers, kept in their order */

BUKORVAL_C_API bukorval_code bukorval_dictionary_new(bukorval_dictionary** dictionary);
BUKORVAL_C_API void bukorval_dictionary_free(bukorval_dictionary* dictionary);
BUKORVAL_C_API size_t bukorval_dictionary_count(const bukorval_dictionary* dictionary);
/* Adds an entry, or replaces its item. */
BUKORVAL_C_API bukorval_code bukorval_dictionary_put(bukorval_dictionary* dictionary, const bukorval_variant* key,
                                                     const bukorval_variant* item);
BUKORVAL_C_API bukorval_code bukorval_dictionary_at(const bukorval_dictionary* dictionary, size_t place,
                                                    bukorval_variant* key, bukorval_variant* item);

#ifdef __cplusplus
}
#endif

#endif
