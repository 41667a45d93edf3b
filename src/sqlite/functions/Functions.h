#pragma once

#include <sqlite3.h>

/// The SQL functions that translated statements call, and how they answer. NULL in any argument gives NULL
/// unless said otherwise. "Units" are a decimal's value × 10^scale: an integer, or its digits in text when 64 bits
/// cannot hold them. All are exact; a result of more than 38 digits is
/// "Arithmetic overflow error converting numeric to data type numeric."
///
/// Collations BK_ORDER                  values::compareText
///            BK_TEXT                   values::compareLetters, for files that are still in that order
///
/// Sums       bk_sum, bk_min, bk_max(units)  aggregates; NULL without values. bk_average(sum, count): whole, truncated
/// Numbers    bk_add, bk_sub, bk_mul(a, b)  units
///            bk_div(a, sa, b, sb, sr)  units at scale sr, truncated as SQL Server does; division by zero is
///                                      "Divide by zero error encountered."
///            bk_int_div, bk_mod(a, b)  truncated; division by zero as above
///            bk_float_div, bk_float_mod(a, b)
///            bk_cmp(a, b)              -1, 0, 1
///            bk_rescale(units, from, to)   rounded half away from zero
///            bk_truncate(units, scale)     whole part
///            bk_round(units, scale, digits), bk_floor(units, scale), bk_ceiling(units, scale), bk_abs(units)
/// Conversions bk_to_float(units, scale), bk_from_float(real, scale)
///            bk_text_to_number(text, scale, decimal)  units; text that is no number is
///                                      "Error converting data type nvarchar to numeric." (decimal 1) or
///                                      "Conversion failed when converting the nvarchar value '…' to data type int."
///            bk_text_to_float(text), bk_text_to_date(text)
///            bk_number_text(units, scale), bk_float_text(real)
///            bk_date_text(date, style) style 0 (and 120) "yyyy-mm-dd hh:mm:ss", 103 "dd/mm/yyyy", 112 "yyyymmdd"
///            bk_cast_text(text, length, fixed)  cut to length (0: no limit), padded when fixed
/// Writes     bk_assign_decimal(units, precision, column)  overflow as above
///            bk_assign_integer(value, bits, column)  "Arithmetic overflow error …" beyond the range
///            bk_assign_text(text, length, fixed, column)  "String or binary data would be truncated." unless only
///                                      blanks are cut; padded when fixed
/// Text       bk_like(pattern, text)
///            bk_len(text) without trailing blanks, bk_ltrim, bk_rtrim, bk_upper, bk_lower
///            bk_substring(text, start, count), bk_left(text, n), bk_right(text, n), bk_replace(text, what, with),
///            bk_replicate(text, n); lengths are characters
/// Dates      bk_now(), bk_dateadd(part, n, date), bk_datediff(part, from, to); part 'd', 'm' or 'y'
/// Other      bk_newid() 36 characters, upper case
namespace sqlite {

/// Gives a connection these functions, sums and the text order.
void registerFunctions(sqlite3* database);

}  // namespace sqlite
