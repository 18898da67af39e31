#pragma once

namespace tulvane {

/// What became of one text.
enum class InsertionResult {
    inserted,          ///< written straight into the focused element
    pasted,            ///< the paste command was posted, and the trailing spaces after it
    copiedToClipboard, ///< only put on the pasteboard, or there was nothing to insert
};

} // namespace tulvane
