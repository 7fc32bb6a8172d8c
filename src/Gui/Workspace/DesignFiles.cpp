// The designs that the workspace opens and saves: menu, dialogs, title, recent designs, recovery.

#include "Base/Version.h"
#include "Design/DesignTexts.h"
#include "Gui/App/FileChooser.h"
#include "Gui/Clock/ZV32MCUPLLView.h"
#include "Gui/Clock/ZV32PLLConfigPage.h"
#include "Gui/Project/ProjectPrompts.h"
#include "Gui/Workspace/FormConfiguration.h"
#include "Gui/Workspace/LoadingProgress.h"
#include "Gui/Workspace/PeripheralsConfig.h"
#include "Gui/Workspace/WorkspacePrompts.h"
#include "Model/RecentDesigns.h"

#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenu>
#include <QPointer>

namespace ChipLoom {

// ---- Opening ----

bool FormConfiguration::OpenDesign(const QString &path)
{
    return openWith([this, &path] { return m_design.OpenDesign(QFileInfo(path).absoluteFilePath()); });
}

bool FormConfiguration::OpenRecoveryCopy(const QString &copy)
{
    const bool opened = openWith([this, &copy] { return m_design.file().OpenCopy(copy); });
    if (opened)
        m_recovery.update();
    return opened;
}

bool FormConfiguration::openWith(const std::function<bool()> &open)
{
    {
        LoadingProgress progress(1, isVisible() ? this : nullptr);
        if (!open())
            return false;
        progress.advance();
    }
    m_PeripheralsConfig->ReceiveIPStatusFlag(QStringLiteral("NVIC"), IPSTATUS_ON);
    m_PeripheralsConfig->setFocus();
    PINConfig_PushButton_Clicked();
    showDeviceName();
    rememberDesign();
    tellOpeningProblems();
    return true;
}

void FormConfiguration::tellOpeningProblems()
{
    const QList<DesignProblem> &problems = m_design.file().problems();
    if (problems.isEmpty())
        return;
    QStringList lines;
    for (const DesignProblem &problem : problems)
        lines.append(problem.place + QLatin1String(": ") + answerText(problem.reason));
    m_prompt.tell(PromptRequest::Kind::Warning, WorkspacePrompts::WarningTitle, WorkspacePrompts::PartlyOpened,
                  lines.join(QLatin1Char('\n')));
}

void FormConfiguration::OpenProject_Action_Triggered()
{
    if (m_design.isOpen() && !mayCloseDesign(WorkspacePrompts::OpenDesignQuestion))
        return;
    const QString path = chooseDesign(this);
    if (!path.isEmpty())
        OpenDesign(path);
}

QString FormConfiguration::chooseDesign(QWidget *parent)
{
    return m_fileChooser->openFile(parent, tr("Open"), tr("Design file (*.ZVWP)"));
}

bool FormConfiguration::mayOpenListed(const QString &path)
{
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        m_prompt.tell(PromptRequest::Kind::Critical, WorkspacePrompts::ErrorTitle, WorkspacePrompts::NoFile,
                      QDir::toNativeSeparators(path));
        return false;
    }
    return m_prompt.ask(WorkspacePrompts::question(PromptRequest::Kind::Information, WorkspacePrompts::InformationTitle,
                                                   WorkspacePrompts::OpenListedQuestion,
                                                   {WorkspacePrompts::Yes, WorkspacePrompts::Cancel})) == 0;
}

void FormConfiguration::OpenDesign_List_Clicked(const QString &path)
{
    if (!mayOpenListed(path))
        return;
    if (m_design.isModified() && !mayCloseDesign(WorkspacePrompts::OpenDesignQuestion))
        return;
    OpenDesign(path);
}

void FormConfiguration::CreateResentlyDesignMenu()
{
    m_recentMenu->clear();
    const QList<ProjectFileSaveInfo> designs = GetRecentlyProjectList(m_xmlOperation.paths().recentDesignsFile());
    for (const ProjectFileSaveInfo &design : designs) {
        const QString text = design.filePath + QLatin1String("-----") + design.creatTime;
        QAction *action = m_recentMenu->addAction(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
        connect(action, &QAction::triggered, this, [this, path = design.filePath] { OpenDesign_List_Clicked(path); });
    }
    if (designs.isEmpty())
        m_recentMenu->addAction(tr("No design has been saved or opened yet."))->setEnabled(false);
}

// ---- Saving ----

bool FormConfiguration::takeTypedText()
{
    // A field in the cell of a table goes when it is left.
    const QPointer<QWidget> field = focusWidget();
    if (field)
        field->clearFocus();
    if (field)
        field->setFocus();

    ZV32MCUPLLView *clock = m_clockConfigForm->view();
    if (!clock || !clock->hasTypedValue())
        return true;
    if (m_prompt.ask(WorkspacePrompts::question(PromptRequest::Kind::Warning, WorkspacePrompts::WarningTitle,
                                                WorkspacePrompts::TypedClock,
                                                {WorkspacePrompts::Yes, WorkspacePrompts::Cancel})) != 0) {
        ClockConfig_PushButton_Clicked();
        return false;
    }
    clock->giveBackTyped();
    return true;
}

bool FormConfiguration::SaveProject_Operation()
{
    if (!takeTypedText())
        return false;
    const QString path = m_design.file().path();
    if (!path.isEmpty() && QFileInfo::exists(path)) {
        const bool mayReplace =
            !m_design.file().isChangedElsewhere() ||
            m_prompt.ask(WorkspacePrompts::question(PromptRequest::Kind::Warning, WorkspacePrompts::WarningTitle,
                                                    WorkspacePrompts::ChangedElsewhere,
                                                    {WorkspacePrompts::Yes, WorkspacePrompts::Cancel})) == 0;
        return mayReplace && saveTo(path);
    }
    return saveTo(chooseTarget());
}

QString FormConfiguration::chooseTarget()
{
    const QString proposal =
        m_design.file().path().isEmpty() ? m_design.device() + QLatin1String("_ChipLoom") : m_design.file().path();
    const QString path = m_fileChooser->saveFile(this, tr("Save"), proposal, tr("ZV32 Chip Loom Design File (*.ZVWP)"));
    if (path.isEmpty())
        return path;
    // The dialog of files asked about the name as it was typed.
    const QString target = withDesignSuffix(path);
    const bool mayReplace =
        target == path || !QFileInfo::exists(target) ||
        ProjectPrompts::mayOverwrite(m_prompt, QFileInfo(target).fileName(), QDir::toNativeSeparators(target));
    return mayReplace ? target : QString();
}

bool FormConfiguration::saveTo(const QString &path)
{
    if (path.isEmpty() || !m_design.SaveProject(QFileInfo(path).absoluteFilePath()))
        return false;
    m_recovery.update();
    showDeviceName();
    rememberDesign();
    return true;
}

void FormConfiguration::SaveProject_Action_Triggered()
{
    if (m_design.isOpen())
        SaveProject_Operation();
}

void FormConfiguration::SaveAsProject_Action_Triggered()
{
    if (m_design.isOpen() && takeTypedText() && saveTo(chooseTarget()))
        m_prompt.tell(PromptRequest::Kind::Information, WorkspacePrompts::InformationTitle, WorkspacePrompts::Saved);
}

void FormConfiguration::rememberDesign()
{
    const QString path = m_design.file().path();
    if (!path.isEmpty())
        SetRecentlyProjectToFile(m_xmlOperation.paths().recentDesignsFile(), path);
}

// ---- What shows it ----

void FormConfiguration::showDeviceName()
{
    QString title = QStringLiteral("ZV32 Chip Loom ") + QLatin1String(ProgramVersion);
    const QString device = m_design.isOpen() ? QStringLiteral("  %1  ").arg(m_design.device()) : QString();
    const QString path = m_design.file().path();
    if (path.isEmpty())
        title += device;
    else
        title += QString(15, QLatin1Char(' ')) + QFileInfo(path).completeBaseName() + QLatin1String(".ZVWP :  ") + path;
    if (m_design.isModified())
        title += QLatin1String(" *");
    m_deviceName->setText(device);
    setWindowTitle(title);
}

} // namespace ChipLoom
