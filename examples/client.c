/* Shows the cards of a budget: client FILE, where FILE was made by `bukorval create FILE --demo`. */
#include <bukorval/bukorval.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static void check(bukorval_code code) {
  if (code == BUKORVAL_OK) return;
  fprintf(stderr, "%s\n", bukorval_error());
  exit(99);
}

static bukorval_variant* value; /* one for all, used again and again */

static void set_number(bukorval_object* budget, const char* property, int number) {
  check(bukorval_put_integer(value, number));
  check(bukorval_set(budget, property, value));
}

static bukorval_column column(bukorval_recordset* grid, const char* name) {
  bukorval_column found;
  bukorval_field field;
  size_t place = 0;
  do check(bukorval_recordset_field(grid, place++, &field));
  while (strcmp(field.name, name) != 0);
  check(bukorval_recordset_column(grid, place - 1, &found));
  return found;
}

int main(int argc, char** argv) {
  bukorval_session* session;
  bukorval_object* budget;
  bukorval_recordset* grid;
  char where[4096];
  int64_t outcome;
  const char* why;
  if (argc != 2) return 2;

  snprintf(where, sizeof where, "Provider=SQLite;Data Source=%s", argv[1]);
  check(bukorval_open(where, NULL, &session));
  check(bukorval_object_new(session, &budget));
  value = bukorval_variant_new();
  set_number(budget, "TipoBudget", 4); /* general expenses, kept per site and card kind */
  check(bukorval_put_text(value, "01", SIZE_MAX));
  check(bukorval_set(budget, "SottoTipoBudget", value));
  set_number(budget, "AnnoEsercizio", 2025);
  set_number(budget, "ProgressivoEsercizio", 1);
  set_number(budget, "CodiceSede", 1);
  set_number(budget, "BdgTipoScheda", 1); /* revenue */

  check(bukorval_call(budget, "RecordSetBudget", NULL, 0, value));
  check(bukorval_take_recordset(value, &grid));
  check(bukorval_get(budget, "Stato", value));
  check(bukorval_take_integer(value, &outcome));
  if (outcome != 0) {
    check(bukorval_get(budget, "errore", value));
    check(bukorval_take_text(value, &why, NULL));
    fprintf(stderr, "%s\n", why);
    return (int)outcome;
  }

  /* Whole columns: the amounts are exact, in cents. */
  const bukorval_column card = column(grid, "BU65_SCHEDA_BU07");
  const bukorval_column planned = column(grid, "IMP_BUDGET");
  const bukorval_column actual = column(grid, "IMP_CONSUNTIVO");
  for (size_t row = 0; row < card.rows; ++row) {
    const long long delta = (long long)(actual.integers[row] - planned.integers[row]);
    const char* name = card.text + card.offsets[row];
    printf("%.*s: budget %lld.%02lld, delta %s%lld.%02lld\n", (int)strcspn(name, " "), name,
           (long long)planned.integers[row] / 100, (long long)planned.integers[row] % 100, delta < 0 ? "-" : "",
           llabs(delta) / 100, llabs(delta) % 100);
  }

  bukorval_recordset_free(grid);
  bukorval_variant_free(value);
  bukorval_object_free(budget);
  bukorval_close(session);
  return 0;
}
