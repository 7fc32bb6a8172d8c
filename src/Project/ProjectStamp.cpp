#include "Project/ProjectStamp.h"

#include "Base/AtomicFile.h"
#include "Base/FileState.h"
#include "Base/Fingerprint.h"
#include "Project/ProjectManifest.h"

#include <QFile>
#include <QSet>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr qint64 MaxStamp = 32 * 1024 * 1024;
const QByteArray FirstLine = QByteArrayLiteral("# Written by Chip Loom. May be deleted. Form 1");
const QString FileName = QStringLiteral("/.chiploom-stamp");

// What a line holds, by its first character; a path stands behind it.
constexpr char FingerprintLine = '=';
constexpr char StatesLine = '#';
constexpr char WatchedLine = 'w';
constexpr char ProjectLine = 'p';
constexpr char GeneratedLine = 'g';

bool isPlain(const FileState &state)
{
    return state.isFile() || state.isFolder();
}

/// Whether a change that follows could leave the file the time that it has: within one step of the clock, which was
/// `before` and `after` the file was asked about, or of a file system that keeps hundredths or pairs of seconds alone.
/// An exact time lies between two steps.
bool mayHideAChange(const FileState &state, qint64 before, qint64 after)
{
    constexpr qint64 Second = 1000000000;
    const bool isCoarse = state.time % (Second / 100) == 0;
    return isCoarse ? state.time >= before - 2 * Second : state.time == before || state.time == after;
}

quint64 sumOf(const QVector<FileState> &states)
{
    Fingerprint sum;
    for (const FileState &state : states) {
        sum.add(qint64(state.kind) * 2 + qint64(state.executable));
        // The size of a folder says nothing.
        sum.add(state.isFolder() ? 0 : state.size);
        sum.add(state.time);
        sum.add(state.change);
        sum.add(qint64(state.inode));
    }
    return sum.value();
}

/// The folders of the project in which files lie, but for its root, where others may do as they like.
QStringList foldersOf(const QStringList &files)
{
    QSet<QString> folders;
    for (QString path : files) {
        for (int slash = path.lastIndexOf(QLatin1Char('/')); slash > 0; slash = path.lastIndexOf(QLatin1Char('/'))) {
            path.truncate(slash);
            folders.insert(path);
        }
    }
    QStringList list(folders.begin(), folders.end());
    list.sort();
    return list;
}

} // namespace

ProjectStamp::ProjectStamp(const QString &root) : m_root(root)
{
    const QList<QByteArray> lines = readFile(root + FileName, MaxStamp).content.split('\n');
    if (lines.first() != FirstLine)
        return;
    m_paths.reserve(lines.size());
    for (const QByteArray &line : lines) {
        const char kind = line.isEmpty() ? '\0' : line.front();
        const QByteArray rest = line.mid(1);
        if (kind == FingerprintLine)
            m_fingerprints.append(rest.toULongLong(nullptr, 16));
        else if (kind == StatesLine)
            m_states = rest.toULongLong(nullptr, 16);
        if (kind == WatchedLine || kind == ProjectLine || kind == GeneratedLine)
            m_paths.append(rest);
        if (kind == ProjectLine)
            m_files.project.append(QFile::decodeName(rest));
        else if (kind == GeneratedLine)
            m_files.generated.append(QFile::decodeName(rest));
    }
}

int ProjectStamp::matches(quint64 fingerprint) const
{
    const int place = m_fingerprints.indexOf(fingerprint);
    if (place < 0)
        return -1;
    const QVector<FileState> states = fileStates(m_root, m_paths);
    return std::all_of(states.begin(), states.end(), isPlain) && sumOf(states) == m_states ? place : -1;
}

void ProjectStamp::leave(const QString &root, qint64 started, const QVector<quint64> &fingerprints, const Files &files)
{
    QByteArray kinds;
    QVector<QByteArray> paths;
    const auto add = [&](char kind, const QStringList &names) {
        for (const QString &name : names) {
            kinds += kind;
            paths.append(QFile::encodeName(name));
        }
    };
    add(WatchedLine, files.watched);
    add(WatchedLine, {ProjectManifest::fileName()});
    add(WatchedLine, foldersOf(files.project + files.generated));
    add(ProjectLine, files.project);
    add(GeneratedLine, files.generated);

    QByteArray text;
    QVector<FileState> states;
    const qint64 before = fileClock();
    const QVector<FileState> found = fileStates(root, paths);
    const qint64 after = fileClock();
    for (int i = 0; i < found.size(); ++i) {
        FileState state = found[i];
        if (kinds[i] == ProjectLine && !state.exists())
            continue;
        const bool isOutside = paths[i].startsWith('/');
        if (!isPlain(state) || paths[i].contains('\n') || (isOutside && state.change >= started))
            return;
        if (mayHideAChange(state, before, after)) {
            const QString path = root + QLatin1Char('/') + QFile::decodeName(paths[i]);
            if (isOutside || !setExactTime(path))
                return;
            state = fileState(path);
        }
        states.append(state);
        text += kinds[i] + paths[i] + '\n';
    }
    QByteArray head = FirstLine + '\n';
    for (const quint64 fingerprint : fingerprints)
        head += FingerprintLine + QByteArray::number(fingerprint, 16) + '\n';
    head += StatesLine + QByteArray::number(sumOf(states), 16) + '\n';
    putFile(root + FileName, head + text);
}

} // namespace ChipLoom
