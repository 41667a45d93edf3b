/* The interface for C, from a program that is C: capi_tests DATABASE, a copy of the demo company. */
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "capi/bukorval.h"

static int failures;

#define EXPECT(condition)                                        \
  do {                                                           \
    if (!(condition)) {                                          \
      printf("%s:%d: not %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                \
    }                                                            \
  } while (0)
#define DONE(call) EXPECT((call) == BUKORVAL_OK || (puts(bukorval_error()), 0))
#define REFUSED(code, call, part) EXPECT((call) == (code) && strstr(bukorval_error(), (part)) != NULL)

static bukorval_session* session;
static bukorval_variant* v;

static const char* text_of(bukorval_variant* value) {
  const char* text = "?";
  DONE(bukorval_take_text(value, &text, NULL));
  return text;
}

static void set(bukorval_object* budget, const char* name, const char* text) {
  DONE(bukorval_put_text(v, text, SIZE_MAX));
  DONE(bukorval_set(budget, name, v));
}

static const char* get(bukorval_object* budget, const char* name) {
  DONE(bukorval_get(budget, name, v));
  return text_of(v);
}

static bukorval_object* general_expenses(void) {
  static const char* const selection[][2] = {{"TipoBudget", "4"},       {"SottoTipoBudget", "01"},
                                             {"AnnoEsercizio", "2025"}, {"ProgressivoEsercizio", "1"},
                                             {"BdgTipoScheda", "0"},    {"CodiceSede", "1"}};
  bukorval_object* budget = NULL;
  DONE(bukorval_object_new(session, &budget));
  for (size_t i = 0; i < sizeof selection / sizeof selection[0]; ++i) set(budget, selection[i][0], selection[i][1]);
  return budget;
}

/* What is put comes back as it was, whatever kind it is of. */
static void values(void) {
  static const struct {
    const char* decimal;
    const char* text;
    int64_t whole;
  } numbers[] = {{"-1234.50", "-1234.50", -1234},
                 {"79228162514264337593543950335", "79228162514264337593543950335", 0}};
  const bukorval_date leap = {2024, 2, 29, 23, 59, 58}, never = {2023, 2, 29, 0, 0, 0};
  bukorval_date date;
  int64_t whole;
  int truth = 0;
  size_t length;
  const char* text;
  double real;
  for (size_t i = 0; i < sizeof numbers / sizeof numbers[0]; ++i) {
    DONE(bukorval_put_decimal(v, numbers[i].decimal));
    EXPECT(bukorval_variant_kind(v) == BUKORVAL_DECIMAL && strcmp(text_of(v), numbers[i].text) == 0);
    whole = 0;
    EXPECT((bukorval_take_integer(v, &whole) == BUKORVAL_OK) == (numbers[i].whole != 0) && whole == numbers[i].whole);
  }
  DONE(bukorval_put_integer(v, INT64_MIN));
  DONE(bukorval_take_integer(v, &whole));
  EXPECT(whole == INT64_MIN);
  DONE(bukorval_put_text(v, "a\0b", 3));
  DONE(bukorval_take_text(v, &text, &length));
  EXPECT(length == 3 && memcmp(text, "a\0b", 4) == 0);
  DONE(bukorval_put_date(v, &leap));
  DONE(bukorval_take_date(v, &date));
  EXPECT(memcmp(&date, &leap, sizeof date) == 0);
  REFUSED(BUKORVAL_FAILED, bukorval_put_date(v, &never), "");
  EXPECT(bukorval_variant_kind(v) == BUKORVAL_DATE);
  DONE(bukorval_put_boolean(v, 7));
  DONE(bukorval_take_boolean(v, &truth));
  EXPECT(truth == 1);
  DONE(bukorval_put_double(v, 0.25));
  DONE(bukorval_take_double(v, &real));
  EXPECT(real == 0.25);
  DONE(bukorval_put_null(v));
  REFUSED(BUKORVAL_FAILED, bukorval_take_integer(v, &whole), "Null");
  REFUSED(BUKORVAL_FAILED, bukorval_put_decimal(v, "1,5"), "1,5");
}

/* Text is read as a number the way numbers are written as text. */
static void numbers_in_text(void) {
  static const struct {
    const char* text;
    double number;
  } cases[] = {{"0.125", 0.125}, {"-1234.5", -1234.5}, {" 7 ", 7}, {"1,234.5", 1234.5}, {"1e3", 1000}};
  static const char* const none[] = {"", "1234,5", "1.2.3", "0x1", "\xff", "9223372036854775807.5.5"};
  double number = 0;
  int64_t whole = 0;
  for (size_t i = 0; i < sizeof cases / sizeof cases[0]; ++i) {
    DONE(bukorval_put_text(v, cases[i].text, SIZE_MAX));
    DONE(bukorval_take_double(v, &number));
    EXPECT(number == cases[i].number);
  }
  for (size_t i = 0; i < sizeof none / sizeof none[0]; ++i) {
    DONE(bukorval_put_text(v, none[i], SIZE_MAX));
    REFUSED(BUKORVAL_FAILED, bukorval_take_double(v, &number), "is no number");
    REFUSED(BUKORVAL_FAILED, bukorval_take_integer(v, &whole), "is no number");
  }
  DONE(bukorval_put_double(v, 0.125));
  DONE(bukorval_put_text(v, text_of(v), SIZE_MAX));
  DONE(bukorval_take_double(v, &number));
  EXPECT(number == 0.125);
}

/* Every member can be described, and every property that can be read is read. */
static void members(void) {
  bukorval_object* budget = general_expenses();
  size_t methods = 0;
  for (size_t i = 0; i < bukorval_member_count(); ++i) {
    bukorval_member member;
    bukorval_parameter parameter;
    DONE(bukorval_member_at(i, &member));
    EXPECT(strstr(member.signature, member.name) == member.signature && strlen(member.description) > 10);
    for (size_t p = 0; p < member.parameters; ++p) {
      DONE(bukorval_parameter_at(i, p, &parameter));
      EXPECT(strstr(member.signature, parameter.name) != NULL && strlen(parameter.type) > 3);
    }
    methods += (size_t)member.is_method;
    if (member.readable) DONE(bukorval_get(budget, member.name, v));
  }
  EXPECT(methods > 50);
  /* What is a session for the library is handed on as it is. */
  DONE(bukorval_get(budget, "ActiveInterface", v));
  EXPECT(bukorval_variant_kind(v) == BUKORVAL_OTHER);
  DONE(bukorval_set(budget, "ActiveInterface", v));
  bukorval_object_free(budget);
}

static void calls(void) {
  bukorval_object* budget = general_expenses();
  bukorval_variant* arguments[5];
  bukorval_member member;
  for (int i = 0; i < 5; ++i) {
    arguments[i] = bukorval_variant_new();
    DONE(bukorval_put_integer(arguments[i], i == 1 ? 2025 : 1));
  }
  DONE(bukorval_call(budget, "determinadateiniziofineesercizio", arguments, 5, NULL));
  EXPECT(strcmp(text_of(arguments[3]), "01/01/2025") == 0 && strcmp(text_of(arguments[4]), "31/12/2025") == 0);
  /* A refusal of the object is its outcome, and the call has been made. */
  set(budget, "SottoTipoBudget", "");
  DONE(bukorval_call(budget, "AllineaBU65_A_StrutturaBU60", NULL, 0, v));
  EXPECT(strcmp(get(budget, "Stato"), "1") == 0 && strstr(get(budget, "errore"), "non definito") != NULL);

  REFUSED(BUKORVAL_MISUSED, bukorval_call(budget, "Nessuno", NULL, 0, NULL), "no method Nessuno");
  REFUSED(BUKORVAL_MISUSED, bukorval_call(budget, "Stato", NULL, 0, NULL), "no method Stato");
  REFUSED(BUKORVAL_MISUSED, bukorval_call(budget, "GetBdgPeriodo", arguments, 1, NULL), "Wrong number of arguments");
  REFUSED(BUKORVAL_MISUSED, bukorval_call(budget, "GetBdgPeriodo", NULL, 1, NULL), "missing");
  REFUSED(BUKORVAL_MISUSED, bukorval_call(budget, "GetBdgPeriodo", arguments, SIZE_MAX, NULL),
          "Wrong number of arguments");
  REFUSED(BUKORVAL_MISUSED, bukorval_get(NULL, "Stato", v), "object is missing");
  REFUSED(BUKORVAL_MISUSED, bukorval_get(budget, "Stato", NULL), "value is missing");
  REFUSED(BUKORVAL_MISUSED, bukorval_set(budget, "Stato", v), "only be read");
  REFUSED(BUKORVAL_MISUSED, bukorval_get(budget, "Connessione", v), "only be written");
  REFUSED(BUKORVAL_MISUSED, bukorval_member_at(bukorval_member_count(), &member), "no such member");
  DONE(bukorval_put_text(v, "quattro", SIZE_MAX));
  REFUSED(BUKORVAL_MISUSED, bukorval_set(budget, "TipoBudget", v), "quattro");
  for (int i = 0; i < 5; ++i) bukorval_variant_free(arguments[i]);
  bukorval_object_free(budget);
}

static bukorval_recordset* query(const char* statement) {
  bukorval_recordset* rows = NULL;
  DONE(bukorval_execute(session, statement, &rows));
  return rows;
}

static void columns(void) {
  bukorval_recordset* rows = query(
      "SELECT TOP 2 BU65_ID, BU65_SCHEDA_BU07, (SELECT SUM(BU66_IMPORTO) FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = "
      "BU65_ID"
      " AND BU66_TIPO = 0) AS IMPORTO, CAST(NULL AS datetime) AS GIORNO FROM BU65_TESBUDGET WHERE BU65_INDTIPO_BU01 = 4"
      " AND BU65_ANNO = 2025 AND BU65_INDCOSRIC_BU07 = 1 AND BU65_CODICE_CG31 = 1 ORDER BY BU65_ID");
  static const bukorval_kind kinds[] = {BUKORVAL_INTEGER, BUKORVAL_TEXT, BUKORVAL_DECIMAL, BUKORVAL_DATE};
  bukorval_column c[4];
  size_t fields = 0;
  DONE(bukorval_recordset_fields(rows, &fields));
  EXPECT(fields == 4);
  for (size_t i = 0; i < 4; ++i) {
    DONE(bukorval_recordset_column(rows, i, &c[i]));
    EXPECT(c[i].kind == kinds[i] && c[i].rows == 2 && c[i].nulls[0] == (i == 3));
  }
  EXPECT(c[0].integers[0] == 59 && c[0].integers[1] == 60);
  EXPECT(strncmp(c[1].text + c[1].offsets[1], "AFFATT", 6) == 0 && c[1].text[c[1].offsets[1] - 1] == '\0');
  EXPECT(c[2].scale == 2 && c[2].integers[0] == 8392000 && c[2].integers[1] == 3600000);
  REFUSED(BUKORVAL_MISUSED, bukorval_recordset_column(rows, 4, c), "no such field");
  bukorval_recordset_free(rows);
  rows = query("SELECT BU65_ID FROM BU65_TESBUDGET WHERE 1 = 2");
  DONE(bukorval_recordset_column(rows, 0, c));
  EXPECT(c[0].rows == 0 && c[0].nulls != NULL);
  bukorval_recordset_free(rows);
  DONE(bukorval_begin(session));
  DONE(bukorval_execute(session, "DELETE FROM BU66_DETBUDGET", NULL));
  DONE(bukorval_rollback(session));
  rows = query("SELECT COUNT(*) AS N FROM BU66_DETBUDGET");
  DONE(bukorval_recordset_column(rows, 0, c));
  EXPECT(c[0].integers[0] > 1000);
  bukorval_recordset_free(rows);
  REFUSED(BUKORVAL_FAILED, bukorval_execute(session, "SELECT X FROM NESSUNA", &rows), "NESSUNA");
}

static void own_sets(void) {
  const bukorval_field fields[] = {{"CONTO", 202, 8, 0, 0, 0}, {"IMPORTO", 131, 0, 28, 2, 1}};
  static const char* const amounts[] = {"1.005", "9999999999999999999999.25", "2"};
  bukorval_recordset *set, *shared;
  bukorval_column column;
  bukorval_variant* cells[2] = {bukorval_variant_new(), bukorval_variant_new()};
  size_t rows = 0;
  DONE(bukorval_recordset_new(&set));
  for (int i = 0; i < 2; ++i) DONE(bukorval_recordset_append(set, &fields[i]));
  DONE(bukorval_recordset_open(set));
  DONE(bukorval_put_text(cells[0], "71020001", SIZE_MAX));
  for (int i = 0; i < 3; ++i) {
    DONE(bukorval_put_decimal(cells[1], amounts[i]));
    DONE(bukorval_recordset_add(set, (const bukorval_variant* const*)cells, 2));
  }
  /* Amounts beyond 64 bits are told as text, none is lost. */
  DONE(bukorval_recordset_column(set, 1, &column));
  EXPECT(column.kind == BUKORVAL_TEXT && strcmp(column.text + column.offsets[1], amounts[1]) == 0);
  DONE(bukorval_put_null(cells[1]));
  DONE(bukorval_recordset_put(set, 1, "importo", cells[1]));
  DONE(bukorval_recordset_column(set, 1, &column));
  EXPECT(column.kind == BUKORVAL_DECIMAL && column.integers[0] == 101 && column.nulls[1] && column.integers[2] == 200);
  /* A row that is refused leaves none behind, and a variant shares the set. */
  DONE(bukorval_put_text(cells[0], "longer than the field", SIZE_MAX));
  REFUSED(BUKORVAL_FAILED, bukorval_recordset_add(set, (const bukorval_variant* const*)cells, 2), "CONTO");
  REFUSED(BUKORVAL_FAILED, bukorval_recordset_put(set, 0, "CONTO", cells[0]), "CONTO");
  REFUSED(BUKORVAL_MISUSED, bukorval_recordset_put(set, 3, "CONTO", cells[0]), "no such row");
  DONE(bukorval_put_recordset(v, set));
  bukorval_recordset_free(set);
  DONE(bukorval_take_recordset(v, &shared));
  DONE(bukorval_recordset_rows(shared, &rows));
  EXPECT(rows == 3);
  bukorval_recordset_free(shared);
  for (int i = 0; i < 2; ++i) bukorval_variant_free(cells[i]);
}

/* A field that no set could be opened with is not there after it was refused. */
static void fields(void) {
  static const struct {
    bukorval_field field;
    bukorval_code code;
    const char* why;
  } refused[] = {{{NULL, 202, 8, 0, 0, 0}, BUKORVAL_MISUSED, "name is missing"},
                 {{"A", 999, 8, 0, 0, 0}, BUKORVAL_FAILED, "Type 999"},
                 {{"A", 202, -1, 0, 0, 0}, BUKORVAL_FAILED, "negative"},
                 {{"A", 131, 0, 40, 2, 0}, BUKORVAL_FAILED, "precision 40"},
                 {{"A", 131, 0, 28, 29, 0}, BUKORVAL_FAILED, "scale 29"},
                 {{"A", 131, 0, 2, 5, 0}, BUKORVAL_FAILED, "greater than the precision"}};
  static const bukorval_field amount = {"A", 131, 0, 0, 2, 1};
  bukorval_variant* cell = bukorval_variant_new();
  bukorval_recordset *set = NULL, *other = NULL;
  bukorval_column column;
  size_t count = 9;
  DONE(bukorval_recordset_new(&set));
  for (size_t i = 0; i < sizeof refused / sizeof refused[0]; ++i)
    REFUSED(refused[i].code, bukorval_recordset_append(set, &refused[i].field), refused[i].why);
  DONE(bukorval_recordset_fields(set, &count));
  EXPECT(count == 0);
  REFUSED(BUKORVAL_FAILED, bukorval_recordset_add(set, NULL, 0), "closed");
  DONE(bukorval_recordset_append(set, &amount));
  DONE(bukorval_recordset_open(set));
  REFUSED(BUKORVAL_FAILED, bukorval_recordset_open(set), "open");
  REFUSED(BUKORVAL_FAILED, bukorval_recordset_append(set, &amount), "open");
  /* A row that another handle adds is there for this one, also after it was missed. */
  DONE(bukorval_put_recordset(v, set));
  DONE(bukorval_take_recordset(v, &other));
  DONE(bukorval_put_decimal(cell, "1.005"));
  REFUSED(BUKORVAL_MISUSED, bukorval_recordset_put(set, 0, "A", cell), "no such row");
  DONE(bukorval_recordset_add(other, (const bukorval_variant* const*)&cell, 1));
  DONE(bukorval_put_decimal(cell, "2.345"));
  DONE(bukorval_recordset_put(set, 0, "A", cell));
  DONE(bukorval_recordset_column(other, 0, &column));
  EXPECT(column.kind == BUKORVAL_DECIMAL && column.rows == 1 && column.scale == 2 && column.integers[0] == 235);
  DONE(bukorval_put_empty(v));
  bukorval_recordset_free(set);
  bukorval_recordset_free(other);
  bukorval_variant_free(cell);
}

/* A handle or a place that is not given is told, and nothing is made that nobody could free. */
static void nothing_given(void) {
  bukorval_date day = {2025, 1, 1, 0, 0, 0};
  bukorval_recordset* set = NULL;
  bukorval_object* budget = general_expenses();
  const char* text;
  int64_t whole;
  double real;
  int truth;
  DONE(bukorval_recordset_new(&set));
#define MISSING(call) REFUSED(BUKORVAL_MISUSED, call, "is missing")
  MISSING(bukorval_open(NULL, NULL, &session));
  MISSING(bukorval_open("Provider=SQLite", NULL, NULL));
  MISSING(bukorval_execute(NULL, "SELECT 1", NULL));
  MISSING(bukorval_execute(session, NULL, NULL));
  MISSING(bukorval_begin(NULL));
  MISSING(bukorval_commit(NULL));
  MISSING(bukorval_rollback(NULL));
  MISSING(bukorval_messages(NULL, NULL, NULL));
  MISSING(bukorval_object_new(NULL, &budget));
  MISSING(bukorval_object_new(session, NULL));
  MISSING(bukorval_get(budget, NULL, v));
  MISSING(bukorval_set(budget, "TipoBudget", NULL));
  MISSING(bukorval_call(NULL, "RecordSetBudget", NULL, 0, v));
  MISSING(bukorval_call(budget, NULL, NULL, 0, v));
  MISSING(bukorval_listen(NULL, NULL));
  MISSING(bukorval_member_at(0, NULL));
  MISSING(bukorval_parameter_at(bukorval_member_count() - 1, 0, NULL));
  MISSING(bukorval_put_empty(NULL));
  MISSING(bukorval_put_decimal(v, NULL));
  MISSING(bukorval_put_date(NULL, &day));
  MISSING(bukorval_put_date(v, NULL));
  MISSING(bukorval_put_text(v, NULL, 0));
  MISSING(bukorval_put_recordset(v, NULL));
  MISSING(bukorval_put_dictionary(v, NULL));
  MISSING(bukorval_take_integer(NULL, &whole));
  MISSING(bukorval_take_integer(v, NULL));
  MISSING(bukorval_take_double(NULL, &real));
  MISSING(bukorval_take_boolean(NULL, &truth));
  MISSING(bukorval_take_date(NULL, &day));
  MISSING(bukorval_take_text(NULL, &text, NULL));
  MISSING(bukorval_take_text(v, NULL, NULL));
  MISSING(bukorval_recordset_new(NULL));
  MISSING(bukorval_recordset_append(set, NULL));
  MISSING(bukorval_recordset_open(NULL));
  MISSING(bukorval_recordset_rows(set, NULL));
  MISSING(bukorval_recordset_fields(NULL, NULL));
  MISSING(bukorval_recordset_column(NULL, 0, NULL));
  MISSING(bukorval_recordset_put(NULL, 0, "A", v));
  MISSING(bukorval_recordset_add(NULL, NULL, 0));
  MISSING(bukorval_dictionary_new(NULL));
  MISSING(bukorval_dictionary_put(NULL, v, v));
  MISSING(bukorval_dictionary_at(NULL, 0, v, v));
  DONE(bukorval_put_recordset(v, set));
  MISSING(bukorval_take_recordset(v, NULL));
  EXPECT(bukorval_dictionary_count(NULL) == 0 && bukorval_variant_kind(NULL) == BUKORVAL_EMPTY);
  DONE(bukorval_put_empty(v));
  bukorval_recordset_free(set);
  bukorval_object_free(budget);
}

struct told {
  int64_t steps, last;
  int begins, ends, stop_at, messages;
};
static int begin(void* user, const char* description, int64_t steps) {
  struct told* told = user;
  EXPECT(description[0] != '\0');
  told->steps = steps;
  ++told->begins;
  return 0;
}
static int step(void* user, int64_t number) {
  struct told* told = user;
  told->last = number;
  return number == told->stop_at;
}
static void end(void* user) { ++((struct told*)user)->ends; }
static void message(void* user, const char* text, int style, const char* title) {
  EXPECT(strlen(text) > 0 && style == 48 && title != NULL);
  ++((struct told*)user)->messages;
}

/* An elaboration of a site with cards and of one without. */
static void events(void) {
  static const char* const inputs[][2] = {{"AnnoEsercizioMovimenti", "2025"}, {"ProgressivoEsercizioMovimenti", "1"},
                                          {"DaData", "01/01/2025"},           {"AData", "31/12/2025"},
                                          {"TipoMovimenti", "1 = 1"},         {"TipoDettaglioDestinazione", "1"}};
  struct told told = {0, 0, 0, 0, 0, 0};
  const bukorval_events telling = {&told, begin, step, end};
  bukorval_object* budget = general_expenses();
  bukorval_dictionary* sites;
  for (size_t i = 0; i < sizeof inputs / sizeof inputs[0]; ++i) set(budget, inputs[i][0], inputs[i][1]);
  DONE(bukorval_dictionary_new(&sites));
  for (int site = 1; site <= 9; site += 8) {
    DONE(bukorval_put_integer(v, site));
    DONE(bukorval_dictionary_put(sites, v, v));
  }
  EXPECT(bukorval_dictionary_count(sites) == 2);
  DONE(bukorval_put_dictionary(v, sites));
  DONE(bukorval_set(budget, "ElencoSedi", v));
  bukorval_dictionary_free(sites);
  DONE(bukorval_listen(budget, &telling));
  DONE(bukorval_messages(session, message, &told));
  DONE(bukorval_call(budget, "BdgElaSchede_Elaborazione", NULL, 0, NULL));
  EXPECT(strcmp(get(budget, "Stato"), "0") == 0 || (puts(get(budget, "errore")), 0));
  EXPECT(told.begins == told.ends && told.begins > 0 && told.last == told.steps && told.steps > 3 &&
         told.messages == 1);
  told.stop_at = 3;
  DONE(bukorval_call(budget, "BdgElaSchede_Elaborazione", NULL, 0, NULL));
  EXPECT(told.last == 3 && strcmp(get(budget, "Stato"), "99") == 0 && strstr(get(budget, "errore"), "Stopped") != NULL);
  DONE(bukorval_messages(session, NULL, NULL));
  bukorval_object_free(budget);
}

int main(int argc, char** argv) {
  char where[4096];
  if (argc != 2) return 2;
  snprintf(where, sizeof where, "Provider=SQLite;Data Source=%s", argv[1]);
  REFUSED(BUKORVAL_FAILED, bukorval_open("Provider=Nessuno", NULL, &session), "Nessuno");
  REFUSED(BUKORVAL_FAILED, bukorval_open(where, "77", &session), "77");
  EXPECT(session == NULL);
  DONE(bukorval_open(where, "1", &session));
  if (!session) return 1;
  v = bukorval_variant_new();
  values();
  numbers_in_text();
  members();
  calls();
  columns();
  own_sets();
  fields();
  nothing_given();
  events();
  bukorval_variant_free(v);
  bukorval_close(session);
  bukorval_object_free(NULL);
  return failures != 0;
}
