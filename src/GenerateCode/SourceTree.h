#pragma once

#include "Base/Beside.h"
#include "Base/NewFolder.h"
#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/SectionedText.h"

#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace ChipLoom {

/// What becomes of one file of a generation.
struct GeneratedFileRecord
{
    enum class State { New, Changed, Unchanged, Removed };

    QString path; ///< below the project directory: "src/main.c"
    State state = State::New;
    QStringList lostBlocks;              ///< blocks of the former file whose text the new one does not carry over
    QStringList expandedBlocks;          ///< blocks whose "\\1" gives way to what the template has there
    QStringList repeatedBlocks = {};     ///< blocks that reach to the copy of a marker line, over generated code
    QString formerCopy = {};             ///< under which the former file is kept, as the new one lacks the user's work
    QString portWithoutPin = {};         ///< of printf: every pin of its transmitter is taken
    QStringList portsWithoutPrintf = {}; ///< that were to serve printf beside the one that does
};

/// The texts of one generation before anything is written: generators read and change them here, and in the end all of
/// them are written, or none if a former file stands in the way.
class SourceTree
{
public:
    /// `directory` is the project directory, with "inc" and "src" below it.
    SourceTree(QString directory, bool keepUserCode);

    QString directory() const { return m_directory; }
    /// Who writes the files; may have other work too.
    const Beside &beside() const { return m_beside; }

    /// In a new directory, what has been put and what will be is written at once by another thread, aside, where it
    /// waits for `write`.
    void writeAtOnce();

    /// A text will be put at this path: this is its place among the others.
    void expect(const QString &path) { m_paths.append(path); }
    /// Line ends are "\n". Files stand in the order in which they were first put, each once it is finished.
    void put(const QString &path, SectionedText text);
    void put(const QString &path, std::string text);
    /// The file goes if it is there with this text, which an earlier choice made, and no other form of the project in
    /// the folder above lists it. With any other text it is the user's.
    void remove(const QString &path, const std::string &text);
    /// What was put, as code and as sections.
    const std::string &text(const QString &path) const;
    SectionedText sections(const QString &path) const;

    /// The same with the user's blocks of the former file, where they are to be kept. `sample` is the template with all
    /// its sections: what it holds in a block is not the user's.
    void putKeepingUserBlocks(const QString &path, SectionedText text, const SectionedText &sample);
    void putKeepingUserBlocks(const QString &path, std::string text, const SectionedText &sample);
    /// The same of a template that is yet to be edited, and then put.
    void putSample(const QString &path, const SectionedText &sample);

    /// Why the tree cannot be written: folders or files that stand in the way, each in a line of its own. Empty if
    /// nothing does.
    QString problems() const;
    /// User blocks of former files whose begin line stands there twice, as in a copy of generated code: each with its
    /// file in a line of its own. What lies between belongs to such a block, so that generated text can be missing.
    QStringList repeatedBlocks() const;
    /// What writing would do.
    QVector<GeneratedFileRecord> compare() const;
    /// Whether the files that the tree was compared with still stand as they were read.
    bool isCurrent() const;
    /// Makes the folders and brings about what `compare` told; takes away what killed runs have left. A new directory
    /// comes as a whole. A former file whose user code would be lost is kept beside the new one. An error for a person,
    /// or empty.
    QString write(const QVector<GeneratedFileRecord> &changes);

private:
    QString absolute(const QString &path) const;
    SectionedText::Parts parts(const QString &path) const;
    /// The file that stands at a path now, read once.
    const TextRead &former(const QString &path) const;
    bool isSame(const QString &path) const;
    bool isListedBeside(const QString &path) const;
    QStringList lostBlocks(const QString &path, const std::string &code) const;
    QStringList folders() const;

    QString m_directory;
    bool m_keepUserCode;
    QStringList m_paths;
    QStringList m_removed;
    /// In one form, and in the other when it is asked for.
    struct Text
    {
        std::optional<SectionedText> sections;
        std::optional<std::string> code;
    };
    Text withUserBlocks(const QString &path, SectionedText text);
    void put(const QString &path, Text made, bool isFinished = true);
    bool hasBlocksToKeep(const QString &path) const { return m_keepUserCode && former(path).ok; }
    mutable std::map<QString, Text> m_texts;
    std::map<QString, SectionedText> m_samples;
    mutable std::map<QString, TextRead> m_former;
    QSet<QString> m_touched; ///< files whose marker lines a user has touched
    Beside m_beside;
    std::unique_ptr<NewFolder> m_newFolder; ///< or null; goes before the texts
};

} // namespace ChipLoom
