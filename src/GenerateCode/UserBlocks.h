#pragma once

#include "GenerateCode/CodeText.h"

#include <QStringList>

namespace ChipLoom {

class TextCut;

// The user's text stands between the comment lines "/* add user code begin NAME */" and "/* add user code end NAME */".
// Blanks behind "/*" and before "*/" are free; exactly one stands before the name.

/// Names of the blocks of a text, in order: word characters and blanks, with at least one line break behind the begin
/// line. Other names are not retained.
QStringList userBlockNames(std::string_view text);

/// Puts one block of the old text in the place of that of the new text, marker lines included. Where a name occurs
/// twice the block spans from its first begin line to its last end line. Without the block in both texts the new one
/// stays. The characters backslash and "1" in the old block stand for what the new block held between its lines.
bool GenerateCode_Handle_KeepUserCode(std::string_view oldText, std::string &newText, const QString &name);

/// The same for each block whose begin line stands in the new text.
bool GenerateCode_Handle_KeepUserCode_EXT(std::string_view oldText, std::string &newText);

/// The same. False if a user has touched the marker lines of the old text, so that its blocks are worth a closer look.
/// `cut` is that of the new text, where it is one that comes again: its blocks are found once.
bool putUserBlocksBack(std::string_view oldText, std::string &newText, const TextCut *cut = nullptr);

/// The blocks of `newText` whose begin line stands more than once in `oldText`, as in a copy of generated code.
QStringList repeatedUserBlocks(std::string_view oldText, std::string_view newText);

/// The blocks of `oldText` with a text of their own between the lines that `newText` would not carry over: also those
/// whose names are not retained, and those that lost a begin or an end line. What `sample`, the template with all its
/// sections, holds in a block is not the user's.
QStringList lostUserBlocks(std::string_view oldText, std::string_view newText, std::string_view sample = {});

/// The blocks of `oldText` that `newText` carries over with another text, because they hold a backslash and "1".
QStringList expandedUserBlocks(std::string_view oldText, std::string_view newText);

} // namespace ChipLoom
