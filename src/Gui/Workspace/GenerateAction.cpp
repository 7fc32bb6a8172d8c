// The generate action of the workspace: checks, project dialog, code, design file, result.

#include "Gui/Project/ProjectPrompts.h"
#include "Gui/Project/ProjectSetting.h"
#include "Gui/Workspace/FormConfiguration.h"
#include "Model/SeriesHelpers.h"
#include "Project/ProjectGeneration.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>

namespace ChipLoom {

namespace {

/// What the desktop opens as the project.
QString projectFile(const QString &folder, IDE_TYPE type, const QString &name)
{
    const QString toolchain = folder + QLatin1String("/project/") + getIDEPathName(type) + QLatin1Char('/');
    switch (type) {
    case IDE_ZV32_IDE:
    case IDE_ECLIPSE_GCC:
        return toolchain + QLatin1String(".project");
    case IDE_IAR_V7_4:
    case IDE_IAR_V8_2:
    case IDE_IAR_V9_3:
        return toolchain + name + QLatin1String(".eww");
    case IDE_MDK_V4:
        return toolchain + name + QLatin1String(".uvproj");
    case IDE_MDK_V5:
        return toolchain + name + QLatin1String(".uvprojx");
    default:
        return toolchain;
    }
}

/// Whether the project stands as it stood before.
bool nothingWritten(const BuilderAccount &account, const GenerationRecord &record)
{
    return account.code == 0 && account.written.isEmpty() && account.removed.isEmpty() &&
           std::all_of(record.files.begin(), record.files.end(), [](const GeneratedFileRecord &file) {
               return file.state == GeneratedFileRecord::State::Unchanged;
           });
}

} // namespace

void FormConfiguration::GeneralCode_Action_Triggered()
{
    if (!m_design.isOpen() || !takeTypedText())
        return;
    const GenerationStop stop = checkBeforeGeneration(m_design, [this] { PINConfig_PushButton_Clicked(); });
    if (stop == GenerationStop::Clock)
        ClockConfig_PushButton_Clicked();
    if (stop != GenerationStop::None)
        return;
    ProjectSetting dialog(m_design, m_xmlOperation, m_settings, m_prompt, *m_fileChooser, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString folder = dialog.getProjectFullPath();
    const GenerationRecord &record =
        dialog.getGeneration().run(true, [] { QApplication::processEvents(QEventLoop::ExcludeUserInputEvents); });
    if (!record.ok) {
        ProjectPrompts::tellGenerateFailed(m_prompt, record.error);
        return;
    }
    dialog.rememberProject();
    const QString former = m_design.file().path();
    saveTo(dialog.getDesignFilePath());

    const IDE_TYPE type = m_design.project().getProjectIDE();
    const bool isTextForm = type == IDE_MAKEFILE || type == IDE_CMAKE;
    const bool complete = m_design.project().UseFirmware && dialog.getLibCompleteFlag();
    QStringList notes;
    if (!former.isEmpty() && former != m_design.file().path())
        notes.append(tr("The design is saved in its project now: %1. The former file stays as it was: %2")
                         .arg(QDir::toNativeSeparators(m_design.file().path()), QDir::toNativeSeparators(former)));
    notes += dialog.getAccount().notes;
    if (nothingWritten(dialog.getAccount(), record))
        notes.append(tr("All files were up to date; none was written."));
    for (const GeneratedFileRecord &file : record.files) {
        for (const QString &remark : remarksOn(file))
            notes.append(file.path + QLatin1String(": ") + remark);
    }
    switch (ProjectPrompts::tellFinished(m_prompt, complete && !isTextForm, notes)) {
    case ProjectPrompts::Finished::OpenFolder:
        QDesktopServices::openUrl(QUrl::fromLocalFile(isTextForm ? folder : folder + QLatin1String("/project")));
        break;
    case ProjectPrompts::Finished::OpenProject:
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(projectFile(folder, type, m_design.project().ProjectName))))
            ProjectPrompts::tellProjectNotOpened(m_prompt);
        break;
    case ProjectPrompts::Finished::Ok:
        break;
    }
}

} // namespace ChipLoom
