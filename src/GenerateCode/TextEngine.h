#pragma once

#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <vector>

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

SectionSpan findSection(const QString &text, const QString &name);

/// A long text cut at its outermost sections, so that each can be edited apart. Sections whose name occurs more than
/// once stay with the text around them.
class SectionedText
{
public:
    explicit SectionedText(const QString &text);

    /// The section with its markers and the line breaks behind it, to be edited in place; null if it is not apart.
    QString *section(const QString &name);
    QString joined() const;

private:
    std::vector<QString> m_parts;
    QHash<QString, int> m_index; ///< by name
};

/// Body of a section with one line break behind it: what a kept section becomes. Empty if the span was not found.
QString keptBody(const QString &text, const SectionSpan &span);

/// Replaces the span, markers and following line breaks included.
void replaceSection(QString &text, const SectionSpan &span, const QString &replacement);

/// Keeps a section's body (followed by exactly one blank line) or removes the section with the blank lines behind it.
/// False if the section is absent.
bool GenerateCode_Handle_Function(QString &text, const QString &name, bool keep);

/// Removes the blank lines before each closing brace.
bool GenerateCode_DeleteBlankLine_FunctionEnd(QString &text);
/// Removes the blank lines behind each opening brace.
bool GenerateCode_DeleteBlankLine_FunctionStart(QString &text);
/// Makes two line breaks of three, once for each place: a run of four leaves three.
bool GenerateCode_DeleteMultiBlankLine(QString &text);

/// A pattern in the dialect of the templates: "." matches a line break, a word character is a letter or digit of
/// Latin-1 or "_". Compiled once for each text; patterns come from the program, never from a user.
QRegularExpression pattern(const QString &text);

/// Replaces every match by a plain text in which nothing is expanded. False if there was no match.
bool rewriteAll(QString &text, const QString &patternText, const QString &replacement);

/// A call in the template, found by its name and number of arguments.
struct CallMatch
{
    int start = -1;
    int length = 0;
    QStringList arguments; ///< trimmed

    bool found() const { return start >= 0; }
};

/// The first call `function(a, b, ...)` with `argumentCount` arguments (a word, with "&" in front or not) and an
/// optional ";". With `wholeLine` the match takes the blanks before the call and all line breaks behind it, as a line
/// that may vanish needs; without line breaks behind it there is then no match.
CallMatch findCall(const QString &text, const QString &function, int argumentCount, bool wholeLine = false);

} // namespace ChipLoom
