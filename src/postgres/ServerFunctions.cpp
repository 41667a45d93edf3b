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

}  // namespace

std::string serverFunctions() {
  return textFunctions() + std::string(kRest) + "COMMENT ON FUNCTION bk_fold(text) IS " +
         quotedText(kFunctionsVersion) + ";\n";
}

}  // namespace postgres
