#include "postgres/ServerFunctions.h"

#include <string_view>

#include "engine/SqlWords.h"
#include "values/Text.h"

namespace postgres {
namespace {

using engine::quotedText;

constexpr unsigned kFirstBeyondAscii = 0x80, kFirstAccented = 0xC0, kBehindAccented = 0x180;
/// Two signs among the letters with accents.
constexpr unsigned kTimes = 0xD7, kDivided = 0xF7;
/// The letters that UPPER and LOWER know: those of one byte.
constexpr unsigned kBehindOneByte = 0x100;

std::string character(unsigned code) {
  return {static_cast<char>(0xC0U | code >> 6U), static_cast<char>(0x80U | (code & 0x3FU))};
}

/// The arguments of translate: what stands for what, sign by sign.
struct Exchange {
  std::string from, to;
  std::string of(const std::string& sql) const {
    return "translate(" + sql + ", " + quotedText(from) + ", " + quotedText(to) + ")";
  }
};

/// Small letters beyond ASCII and their capitals.
Exchange capitals(unsigned behind) {
  Exchange exchange;
  for (unsigned code = kFirstBeyondAscii; code < behind; ++code) {
    const auto small = character(code);
    const auto capital = values::foldText(small);
    if (capital == small || (behind == kBehindOneByte && capital > character(kBehindOneByte - 1))) continue;
    exchange.from += small;
    exchange.to += capital;
  }
  return exchange;
}

/// Letters with accents and the plain capitals that they stand behind.
Exchange plainLetters() {
  Exchange exchange;
  for (unsigned code = kFirstAccented; code < kBehindAccented; ++code) {
    if (code == kTimes || code == kDivided) continue;
    const auto accented = character(code);
    char base = 'A';
    while (base < 'Z' && values::compareText(std::string(1, static_cast<char>(base + 1)), accented) <= 0) ++base;
    exchange.from += accented;
    exchange.to += base;
  }
  return exchange;
}

/// Signs before digits before letters, among signs by their codes. Small letters stay; the signs and digits that do
/// not come before them already take the codes that the capitals leave free.
Exchange signsFirst() {
  return {
      "[\\]^_`{|}~\x7F"
      "0123456789",
      "ABCDEFGHIJKLMNOPQRSTU"};
}

std::string byBytes(const std::string& sql) { return "(" + sql + " COLLATE \"C\")"; }

std::string function(std::string_view head, std::string_view returns, const std::string& expression) {
  return "CREATE OR REPLACE FUNCTION " + std::string(head) + " RETURNS " + std::string(returns) +
         " LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $f$ SELECT " + expression + " $f$;\n";
}

/// Plain texts are the rule: only others are looked at sign by sign.
std::string ifPlain(const std::string& plain, const std::string& other) {
  return "CASE WHEN octet_length($1) = char_length($1) THEN " + plain + " ELSE " + other + " END";
}

std::string textFunctions() {
  const auto upper = [](const std::string& sql) { return "upper" + byBytes(sql); };
  const auto lower = [](const std::string& sql) { return "lower" + byBytes(sql); };
  const auto all = capitals(kBehindAccented);
  const auto oneByte = capitals(kBehindOneByte);
  const Exchange small{oneByte.to, oneByte.from};
  const auto trimmed = std::string("rtrim($1)");
  const auto folded = all.of(upper(trimmed));
  const auto ordered = [&](const std::string& sql) { return signsFirst().of(lower(sql)); };
  const std::string key = ordered(plainLetters().of(trimmed)) + " || chr(1) || " + folded;
  return function("bk_fold(text)", "text", byBytes(ifPlain(upper(trimmed), folded))) +
         function("bk_key(text)", "text", byBytes(ifPlain(ordered(trimmed), key))) +
         function("bk_upper(text)", "text", byBytes(ifPlain(upper("$1"), all.of(upper("$1"))))) +
         function("bk_capital(text)", "text", ifPlain(upper("$1"), oneByte.of(upper("$1")))) +
         function("bk_small(text)", "text", ifPlain(lower("$1"), small.of(lower("$1")))) +
         function("bk_left(text, int)", "text", "substring($1 FROM 1 FOR $2)") +
         function("bk_right(text, int)", "text", "substring($1 FROM greatest(char_length($1) - $2 + 1, 1) FOR $2)") +
         function("bk_replicate(text, int)", "text",
                  "repeat(substring($1 FROM 1 FOR CASE WHEN $2 < 0 THEN $2 ELSE char_length($1) END), $2)") +
         function("bk_lesser(text, text)", "text STRICT", "CASE WHEN bk_key($2) < bk_key($1) THEN $2 ELSE $1 END") +
         function("bk_greater(text, text)", "text STRICT", "CASE WHEN bk_key($2) > bk_key($1) THEN $2 ELSE $1 END");
}

/// What is refused carries the error class of the server that tells whose words they are.
constexpr std::string_view kRest = R"(
CREATE OR REPLACE FUNCTION bk_text_to_numeric(x text) RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
BEGIN
  IF x !~ '^ *[-+]?([0-9]+\.?[0-9]*|\.[0-9]+) *$' THEN
    RAISE EXCEPTION USING ERRCODE = 'P0001', MESSAGE = 'Error converting data type nvarchar to numeric.';
  END IF;
  RETURN trim(x)::numeric;
END $f$;
CREATE OR REPLACE FUNCTION bk_text_to_int(x text) RETURNS numeric LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
BEGIN
  IF trim(x) = '' THEN
    RETURN 0;
  END IF;
  IF x !~ '^ *[-+]?[0-9]+ *$' THEN
    RAISE EXCEPTION USING ERRCODE = 'P0001',
      MESSAGE = 'Conversion failed when converting the nvarchar value ''' || x || ''' to data type int.';
  END IF;
  RETURN trim(x)::numeric;
END $f$;
CREATE OR REPLACE FUNCTION bk_text_to_date(x text) RETURNS timestamp LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
  p text[] := regexp_match(x,
    '^ *(\d{4})(?:-(\d\d)-(\d\d)|(\d\d)(\d\d))(?:[ T](\d\d):(\d\d)(?::(\d\d))?(?:\.\d*)?)? *$');
BEGIN
  IF trim(x) = '' THEN
    RETURN timestamp '1900-01-01';
  END IF;
  IF p IS NULL THEN
    RAISE EXCEPTION USING ERRCODE = 'P0001',
      MESSAGE = 'Conversion failed when converting date and/or time from character string';
  END IF;
  RETURN make_timestamp(p[1]::int, coalesce(p[2], p[4])::int, coalesce(p[3], p[5])::int, coalesce(p[6], '0')::int,
                        coalesce(p[7], '0')::int, coalesce(p[8], '0')::int);
EXCEPTION WHEN datetime_field_overflow THEN
  RAISE EXCEPTION USING ERRCODE = 'P0001',
    MESSAGE = 'The conversion to a date and time resulted in an out-of-range value';
END $f$;
CREATE OR REPLACE FUNCTION bk_like_regex(x text) RETURNS text LANGUAGE plpgsql IMMUTABLE STRICT PARALLEL SAFE AS $f$
DECLARE
  p text := bk_upper(x);
  r text := '';
  i int := 1;
  e int;
BEGIN
  WHILE i <= char_length(p) LOOP
    e := CASE WHEN substr(p, i, 1) = '[' THEN strpos(substr(p, i + 1), ']') ELSE 0 END;
    IF e > 0 THEN
      r := r || '[' || CASE WHEN substr(p, i + 1, 1) = '^' THEN '^' ELSE '' END
             || regexp_replace(ltrim(substr(p, i + 1, e - 1), '^'), '([\\\[\]^])', '\\\1', 'g') || ']';
      i := i + e;
    ELSE
      r := r || CASE substr(p, i, 1) WHEN '%' THEN '.*' WHEN '_' THEN '.'
                ELSE regexp_replace(substr(p, i, 1), '([^[:alnum:] ])', '\\\1') END;
    END IF;
    i := i + 1;
  END LOOP;
  RETURN '^' || r || ' *$';
END $f$;
CREATE OR REPLACE AGGREGATE bk_min(text) (SFUNC = bk_lesser, STYPE = text, PARALLEL = SAFE, COMBINEFUNC = bk_lesser);
CREATE OR REPLACE AGGREGATE bk_max(text) (SFUNC = bk_greater, STYPE = text, PARALLEL = SAFE, COMBINEFUNC = bk_greater);
)";

/// What changes are tracked by and taken back with (see TriggerTracker.h).
constexpr std::string_view kTracking = R"(
CREATE OR REPLACE FUNCTION bk_track() RETURNS trigger LANGUAGE plpgsql AS $f$
BEGIN
  INSERT INTO pg_temp.bk_tracked (t, o, n)
  VALUES (TG_TABLE_NAME, CASE WHEN TG_OP <> 'INSERT' THEN to_jsonb(OLD) END,
          CASE WHEN TG_OP <> 'DELETE' THEN to_jsonb(NEW) END);
  RETURN NULL;
END $f$;
CREATE OR REPLACE FUNCTION bk_track_table(x regclass) RETURNS void LANGUAGE plpgsql AS $f$
BEGIN
  IF NOT EXISTS (SELECT 1 FROM pg_trigger WHERE tgrelid = x AND tgname = 'bk_track') THEN
    EXECUTE format('CREATE TRIGGER bk_track AFTER INSERT OR UPDATE OR DELETE ON %s FOR EACH ROW'
                   ' WHEN (current_setting(''bukorval.track'', true) = ''on'') EXECUTE FUNCTION bk_track()', x);
  END IF;
EXCEPTION WHEN duplicate_object THEN NULL;  -- another session was first
END $f$;
CREATE OR REPLACE FUNCTION bk_changes(changes text)
RETURNS TABLE (i bigint, t text, k text[], o jsonb, n jsonb) LANGUAGE sql STABLE AS $f$
  SELECT x.i, x.j ->> 0, ARRAY(SELECT jsonb_array_elements_text(x.j -> 1)), nullif(x.j -> 2, 'null'), nullif(x.j -> 3, 'null')
  FROM (SELECT l::jsonb AS j, i
        FROM unnest(string_to_array(convert_from(decode(changes, 'base64'), 'UTF8'), E'\n')) WITH ORDINALITY AS u(l, i)) x
$f$;
CREATE OR REPLACE FUNCTION bk_take_back(changes text, stamps text[])
RETURNS TABLE (i bigint, place int, t text, c text, before text, after text) LANGUAGE plpgsql AS $f$
#variable_conflict use_column
DECLARE
  r record;
  now jsonb;
  found_none boolean := true;
  same boolean;
  wanted text;
  columns text;
BEGIN
  -- Nothing is written before every row is seen to be as the changes left it.
  FOR r IN SELECT * FROM bk_changes(changes) x ORDER BY x.i LOOP
    SELECT string_agg(format('%I = (jsonb_populate_record(NULL::%I, $1)).%I', key, r.t, key), ' AND ')
    INTO wanted FROM unnest(r.k) key;
    now := NULL;
    EXECUTE format('SELECT to_jsonb(x) FROM %I x WHERE %s', r.t, wanted) INTO now USING coalesce(r.n, r.o);
    IF r.n IS NULL THEN
      same := now IS NULL;
    ELSE
      same := now IS NOT NULL AND NOT EXISTS (SELECT 1 FROM jsonb_each(r.n - stamps) e WHERE e.value IS DISTINCT FROM now -> e.key);
    END IF;
    CONTINUE WHEN same;
    found_none := false;
    -- A row that is gone or there again is told by its values alone.
    RETURN QUERY SELECT r.i, a.attnum::int, r.t, a.attname::text, r.n ->> a.attname::text,
                        CASE WHEN r.n IS NULL OR now IS NULL THEN coalesce(r.n, r.o) ELSE now END ->> a.attname::text
                 FROM pg_attribute a
                 WHERE a.attrelid = to_regclass(quote_ident(r.t)) AND (coalesce(r.n, r.o) - stamps) ? a.attname::text;
  END LOOP;
  IF NOT found_none THEN
    RETURN;
  END IF;
  -- Rows that were new go first, so that those that were there find their places free.
  FOR r IN SELECT * FROM bk_changes(changes) x ORDER BY x.o IS NOT NULL, x.n IS NULL, x.i LOOP
    SELECT string_agg(format('%I = (jsonb_populate_record(NULL::%I, $1)).%I', key, r.t, key), ' AND ')
    INTO wanted FROM unnest(r.k) key;
    IF r.o IS NULL THEN
      EXECUTE format('DELETE FROM %I WHERE %s', r.t, wanted) USING r.n;
    ELSIF r.n IS NULL THEN
      EXECUTE format('INSERT INTO %I SELECT * FROM jsonb_populate_record(NULL::%I, $1)', r.t, r.t) USING r.o;
    ELSE
      SELECT string_agg(format('%I = (jsonb_populate_record(NULL::%I, $2)).%I', key, r.t, key), ', ')
      INTO columns FROM jsonb_object_keys(r.o) key;
      EXECUTE format('UPDATE %I SET %s WHERE %s', r.t, columns, wanted) USING r.n, r.o;
    END IF;
  END LOOP;
END $f$;
)";

}  // namespace

std::string serverFunctions() {
  return textFunctions() + std::string(kRest) + std::string(kTracking) + "COMMENT ON FUNCTION bk_fold(text) IS " +
         quotedText(kFunctionsVersion) + ";\n";
}

}  // namespace postgres
