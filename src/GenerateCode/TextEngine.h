#pragma once

#include "GenerateCode/CodeText.h"

#include <QRegularExpression>
#include <QStringList>

namespace ChipLoom {

// Edits of one template text. Line ends are "\n" alone.
//
// A section is a pair of marker lines "[#name]" and "[/#name]", each followed by blanks at most. All operations on a
// name take the span from its first opening line to its last closing line: a repeated name is one section, with the
// text between its repetitions. A body has at least one character, its last line break included.

/// Where a section stands: the whole span with the line breaks behind it, and the body in it.
struct SectionSpan
{
    int start = -1;
    int length = 0;
    int bodyStart = 0;
    int bodyLength = 0;

    bool found() const { return start >= 0; }
};

SectionSpan findSection(std::string_view text, const QString &name);

/// Position behind blanks and one line break that follow `from`, or -1.
int lineEndBehind(std::string_view text, int from);

/// Body of a section with one line break behind it: what a kept section becomes. Empty if the span was not found.
std::string keptBody(std::string_view text, const SectionSpan &span);

/// Replaces the span, markers and following line breaks included.
void replaceSection(std::string &text, const SectionSpan &span, std::string_view replacement);

/// Keeps a section's body (followed by exactly one blank line) or removes the section with the blank lines behind it.
/// False if the section is absent.
bool GenerateCode_Handle_Function(std::string &text, const QString &name, bool keep);

/// Removes the blank lines before each closing brace.
bool GenerateCode_DeleteBlankLine_FunctionEnd(std::string &text);
/// Removes the blank lines behind each opening brace.
bool GenerateCode_DeleteBlankLine_FunctionStart(std::string &text);
/// Makes two line breaks of three, once for each place: a run of four leaves three.
bool GenerateCode_DeleteMultiBlankLine(std::string &text);

/// A pattern in the dialect of the templates: "." matches a line break, a word character is a letter or digit of
/// Latin-1 or "_". Compiled once for each text; patterns come from the program, never from a user.
QRegularExpression pattern(const QString &text);

/// Replaces every match by a plain text in which nothing is expanded. False if there was no match.
bool rewriteAll(std::string &text, const QString &patternText, const QString &replacement);

/// Replaces a word wherever it stands by itself. False if it does not.
bool rewriteWord(std::string &text, const QString &word, const QString &replacement);

/// A call in the template, found by its name and number of arguments.
struct CallMatch
{
    int start = -1;
    int length = 0;
    QStringList arguments; ///< trimmed

    bool found() const { return start >= 0; }
};

/// The first call `function(a, b, ...)` at or behind `from` with `argumentCount` arguments (a word, with "&" in front
/// or not) and an optional ";".
CallMatch findCall(std::string_view text, const QString &function, int argumentCount, int from = 0);
/// Appends "function(a, b);".
void appendCall(std::string &text, const QString &function, const QStringList &arguments);
/// The same alone.
std::string callText(const QString &function, const QStringList &arguments);
/// Writes the first call of a function with as many arguments anew. False if there is none.
bool rewriteCall(std::string &text, const QString &function, const QStringList &arguments);
/// Puts a text in the place of every call. False if there was none.
bool rewriteCalls(std::string &text, const QString &function, int argumentCount, std::string_view replacement);

/// Writes every assignment of a word to a member anew, as "member = value;"; blanks around "=" and line breaks are
/// free. False if there was none.
bool rewriteAssignments(std::string &text, const QString &member, const QString &value);

} // namespace ChipLoom
