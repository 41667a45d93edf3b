#pragma once

#include <string>

/// The functions that translated statements call on the server, made in the schema of the tables with the first of
/// them.
///
///   bk_fold(text)   equal for texts that SQL Server takes for equal: capitals, no blanks at the end
///   bk_key(text)    orders as values::compareText does: signs, digits, letters, an accent only between equal letters
///   bk_upper(text)  capitals, blanks kept: what LIKE looks at
///   bk_capital, bk_small(text)  UPPER and LOWER
///   bk_left, bk_right, bk_replicate(text, int)
///   bk_text_to_numeric, bk_text_to_int, bk_text_to_date(text)  with SQL Server's refusals
///   bk_like_regex(text)         a pattern of LIKE as a regular expression over bk_upper
///   bk_min, bk_max(text)        aggregates in the order of bk_key
///   bk_track, bk_track_table, bk_changes, bk_take_back  for what TriggerTracker.h does
///
/// The first two stand in indexes. They call nothing of ours, so that a dump can be restored in any order, and are
/// single expressions, which the planner writes into the statement.
namespace postgres {

/// Statements that make the functions or replace older ones.
std::string serverFunctions();

/// The comment on bk_fold that tells which functions a database has.
inline constexpr const char* kFunctionsVersion = "bukorval text 1";

}  // namespace postgres
