#pragma once

#include "Project/ProjectOrder.h"

#include <QThread>

#include <atomic>

namespace ChipLoom {

class PackageListing;
class ProjectFolder;
class ToolchainEditor;

/// Builds a project: assembles its folder from the firmware package, and has the files of the toolchain edited. Lives
/// through one run. It asks nobody; what came of it stands in the account.
class GenerateProjectThread : public QThread
{
    Q_OBJECT
public:
    explicit GenerateProjectThread(ProjectOrder order, QObject *parent = nullptr);

    /// In place of the toolchain's own; it outlives the run.
    void setEditor(const ToolchainEditor *editor) { m_editor = editor; }
    /// Ends the run between two files. What has been copied stays, and the next run goes on from there; libraries that
    /// were being replaced stay as they were.
    void cancel() { m_stop = true; }

    /// The whole of the work on the calling thread; `run` does it on its own.
    const BuilderAccount &build();
    /// Once the thread has finished.
    const BuilderAccount &account() const { return m_account; }

signals:
    /// Files done, of how many.
    void progress(int done, int total);
    void result(int code);

protected:
    void run() override;

private:
    void emitResult(int code) { emit result(code); }
    int GenerateProject(ProjectFolder &folder);
    bool BackupOldProjectFile(ProjectFolder &folder);
    bool CopyProjectDirAndFile(ProjectFolder &folder);
    void DeleteMiddlewaresFile(ProjectFolder &folder);
    bool CopyMiddlewaresFile(ProjectFolder &folder);
    bool ConfigLinkerSettings();
    bool ConfigProjectFile();

    // What is copied.
    bool listLibraries(PackageListing &package) const;
    bool listSkeleton(PackageListing &package, PackageListing &templates, bool keepExisting) const;
    bool listLinkerScript(PackageListing &package) const;
    /// An older package may lack a driver that the design uses.
    void tellMissingDrivers(const PackageListing &package);
    void DeleteLDFileInFolder(ProjectFolder &folder, const PackageListing &package) const;
    bool fail(const QString &detail);

    ProjectOrder m_order;
    BuilderAccount m_account;
    const ToolchainEditor *m_editor;
    std::atomic<bool> m_stop{false};
    int m_done = 0;
    int m_total = 0;
    bool m_isFirstGenerateProject = false;
};

} // namespace ChipLoom
