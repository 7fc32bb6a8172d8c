#pragma once

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace ChipLoom {

/// What a run that came to its end looked at and left behind, in the file ".chiploom-stamp" of the project's root: as
/// long as none of it changes, another run of the same design need not be made. Sizes, times and the system's numbers
/// of files stand for their contents. A project without it is made in full; nothing is lost by deleting it.
class ProjectStamp
{
public:
    struct Files
    {
        QStringList watched;   ///< files and folders that the project is made from; absolute
        QStringList project;   ///< what the builder keeps, relative to the root; those that are gone are passed over
        QStringList generated; ///< generated sources, relative to the root
    };

    explicit ProjectStamp(const QString &root);

    /// Which of the fingerprints that the run left (by its place, or -1) this is, if all stands as the run left it.
    int matches(quint64 fingerprint) const;
    const Files &files() const { return m_files; }

    /// Leaves a stamp of a run that began at `started` (see `fileClock`). Without effect where a change could pass
    /// unnoticed: behind links, for names that the file cannot hold, in what somebody changed during the run, and where
    /// the file system keeps coarse times.
    static void leave(const QString &root, qint64 started, const QVector<quint64> &fingerprints, const Files &files);

private:
    QString m_root;
    QVector<quint64> m_fingerprints;
    quint64 m_states = 0;
    QVector<QByteArray> m_paths;
    Files m_files; ///< without `watched`
};

} // namespace ChipLoom
