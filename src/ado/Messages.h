#pragma once

/// Texts of the errors that several classes of this folder raise, in the words a data-access client knows.
namespace ado {

inline constexpr const char* kNoCurrentRow =
    "Either BOF or EOF is True, or the current record has been deleted. "
    "Requested operation requires a current record";
inline constexpr const char* kObjectClosed = "Operation is not allowed when the object is closed";
inline constexpr const char* kObjectOpen = "Operation is not allowed when the object is open";

}  // namespace ado
