#include "Gui/Project/ProjectSetting.h"

#include "Design/ToolchainRules.h"
#include "Gui/App/Style.h"
#include "Gui/Project/FunctionRankPage.h"
#include "Gui/Project/ProjectPrompts.h"
#include "Model/SeriesHelpers.h"
#include "Project/GenerateProjectThread.h"
#include "Project/ProjectGeneration.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QRadioButton>
#include <QStandardItemModel>

namespace ChipLoom {

namespace {

const QString LocationKey = QStringLiteral("ProjectLocation");
const QString ToolchainKey = QStringLiteral("ToolchainIDE");

} // namespace

ProjectSetting::ProjectSetting(Design &design, const XMLOperation &xml, Settings &settings, UserPrompt &prompt,
                               FileChooser &files, QWidget *parent)
    : QDialog(parent), m_design(design), m_xml(xml), m_settings(settings), m_prompt(prompt), m_files(files),
      m_PackageRepositoryPath(packageRepository(xml)), m_BSPVersionForGenerate(design.project().PackageVersion)
{
    setWindowTitle(tr("Project Settings"));
    Style::setRole(this, Style::Role::Window);
    createLayout();
    IDEType_Items_Valid_Manage();

    ProjectValues values = design.project();
    // A project that was never generated begins beside its design, or where the last one was.
    if (values.ProjectLocation.isEmpty()) {
        const QString last = m_settings.value(LocationKey);
        if (!design.file().path().isEmpty())
            values.ProjectLocation = QFileInfo(design.file().path()).absolutePath();
        else
            values.ProjectLocation = last.isEmpty() ? xml.paths().homeDir() : last;
        const QString toolchain = m_settings.value(ToolchainKey);
        if (!toolchain.isEmpty())
            values.ToolchainIDE = getIDEPathName(IDETypeString2Enum(toolchain));
    }
    showValues(values);
    m_rankPage->setRank(validFunctionRank(design));
}

void ProjectSetting::showValues(const ProjectValues &values)
{
    m_lineEditProjName->setText(values.ProjectName);
    m_lineEditProjLocation->setText(QDir::toNativeSeparators(values.ProjectLocation));
    const int toolchain = m_comboBoxIDE->findData(values.getProjectIDE());
    m_comboBoxIDE->setCurrentIndex(-1);
    m_comboBoxIDE->setCurrentIndex(toolchain);
    m_comboBoxAC5_AC6->setCurrentIndex(m_comboBoxAC5_AC6->findData(values.ARMCompiler));
    m_checkBackupCode->setChecked(values.BackupCode);
    m_checkKeepUserCode->setChecked(values.KeepUserCode);
    m_checkNotUsedPinAnalog->setChecked(values.NotUsedPinAnalog);
    m_checkCodeSplit->setChecked(values.CodeSplitIP);
    m_checkDeletePriviousFiles->setChecked(values.DeletePriviousFiles);
    m_addAll_RadioButton->setChecked(!values.AddNecessaryFileFlag);
    m_addNecessary_RadioButton->setChecked(values.AddNecessaryFileFlag);
    m_lineEditMinHeapSize->setText(values.MinHeapSize);
    m_lineEditMinStackSize->setText(values.MinStackSize);
    updatePackageVersionComboBox(values.PackageVersion);
    m_checkUseFirmware->setChecked(values.UseFirmware);
    FirmwareConfigEnable(m_checkUseFirmware->checkState());
    showFolder();
}

ProjectValues ProjectSetting::shownValues() const
{
    ProjectValues values = m_design.project();
    values.ProjectName = m_lineEditProjName->text().trimmed();
    const QString location = QDir::fromNativeSeparators(m_lineEditProjLocation->text().trimmed());
    values.ProjectLocation = location.isEmpty() ? location : QDir(location).absolutePath();
    values.ToolchainIDE = getIDEPathName(IDE_TYPE(m_comboBoxIDE->currentData().toInt()));
    values.ARMCompiler = m_comboBoxAC5_AC6->currentData().toString();
    values.BackupCode = m_checkBackupCode->isChecked();
    values.KeepUserCode = m_checkKeepUserCode->isChecked();
    values.NotUsedPinAnalog = m_checkNotUsedPinAnalog->isChecked();
    values.CodeSplitIP = m_checkCodeSplit->isChecked();
    values.DeletePriviousFiles = m_checkDeletePriviousFiles->isChecked();
    values.AddNecessaryFileFlag = m_addNecessary_RadioButton->isChecked();
    values.MinHeapSize = m_lineEditMinHeapSize->text();
    values.MinStackSize = m_lineEditMinStackSize->text();
    values.UseFirmware = m_checkUseFirmware->isChecked();
    if (values.UseFirmware && !chosenPackage().path.isEmpty())
        values.PackageVersion = chosenPackage().version;
    return values;
}

void ProjectSetting::IDEType_Items_Valid_Manage()
{
    const QStringList middlewares = validMiddlewares(m_design);
    auto *model = qobject_cast<QStandardItemModel *>(m_comboBoxIDE->model());
    for (const IDE_TYPE type : offeredToolchains()) {
        m_comboBoxIDE->addItem(getIDEPathName(type), type);
        const ToolchainReason reason = toolchainReason(type, m_design.series(), middlewares);
        QStandardItem *item = model->item(m_comboBoxIDE->count() - 1);
        item->setEnabled(reason == ToolchainReason::None);
        item->setToolTip(toolchainReasonText(reason));
    }
}

void ProjectSetting::updatePackageVersionComboBox(const QString &version)
{
    m_packages = firmwarePackages(m_xml.paths(), m_PackageRepositoryPath, m_design.series());
    m_comboBoxPackageVersion->clear();
    for (const FirmwarePackage &package : qAsConst(m_packages)) {
        m_comboBoxPackageVersion->addItem(package.bundled ? tr("%1 (comes with the program)").arg(package.version)
                                                          : package.version);
        if (package.version == version)
            m_comboBoxPackageVersion->setCurrentIndex(m_comboBoxPackageVersion->count() - 1);
    }
    PackageVersionChanged_comboBoxSlot();
}

void ProjectSetting::PackageVersionChanged_comboBoxSlot()
{
    const QString path = QDir::toNativeSeparators(chosenPackage().path);
    m_lineEditFirmwarePath->setText(path);
    m_lineEditFirmwarePath->setToolTip(path);
}

FirmwarePackage ProjectSetting::chosenPackage() const
{
    return m_packages.value(m_comboBoxPackageVersion->currentIndex());
}

void ProjectSetting::FirmwareConfigEnable(int state)
{
    m_comboBoxPackageVersion->setEnabled(state == Qt::Checked);
    m_lineEditFirmwarePath->setEnabled(state == Qt::Checked);
    m_btnBrowseRepository->setEnabled(state == Qt::Checked);
}

void ProjectSetting::browseLocation()
{
    const QString folder = m_files.openFolder(this, tr("Select directory"), m_lineEditProjLocation->text());
    if (!folder.isEmpty())
        m_lineEditProjLocation->setText(QDir::toNativeSeparators(folder));
}

void ProjectSetting::browseRepository()
{
    const QString folder = m_files.openFolder(this, tr("Select directory"), m_PackageRepositoryPath);
    if (!folder.isEmpty())
        updateRepoPath(QDir(folder).absolutePath());
}

void ProjectSetting::updateRepoPath(const QString &folder)
{
    const QList<FirmwarePackage> packages = firmwarePackages(m_xml.paths(), folder, m_design.series());
    if (packages.isEmpty() || packages.first().bundled) {
        ProjectPrompts::tellNoPackages(m_prompt, QDir::toNativeSeparators(folder),
                                       MCUSerialString_To_MCUConSerialString(m_design.series()));
        return;
    }
    m_PackageRepositoryPath = folder;
    m_settings.setValue(PackageRepositoryKey, folder);
    updatePackageVersionComboBox(packages.first().version);
}

void ProjectSetting::showFolder()
{
    const QString folder = shownValues().getProjectFullPath(m_design.file().path());
    m_folderLabel->setText(folder.isEmpty() ? QString() : tr("Files go to %1").arg(QDir::toNativeSeparators(folder)));
}

QString ProjectSetting::overwritingText(const ProjectValues &values) const
{
    const QString open = m_design.file().path();
    const QString design = values.getDesignFilePath(open);
    QStringList lines{
        tr("What was generated is made anew in %1.").arg(QDir::toNativeSeparators(values.getProjectFullPath(open)))};
    lines.append(values.KeepUserCode
                     ? tr("What you wrote between the marker comments stays. Where it no longer fits, the former file "
                          "is kept beside the new one and named afterwards.")
                     : tr("What you wrote between the marker comments is lost: \"%1\" is off.")
                           .arg(m_checkKeepUserCode->text()));
    if (!QFileInfo::exists(design))
        return lines.join(QLatin1Char('\n'));
    if (QFileInfo(design).canonicalFilePath() != QFileInfo(open).canonicalFilePath())
        lines.append(
            tr("The design that lies there, %1, is replaced by the open one.").arg(QFileInfo(design).fileName()));
    else if (m_design.file().isChangedElsewhere())
        lines.append(tr("Another program has changed the file of this design; it is replaced too."));
    return lines.join(QLatin1Char('\n'));
}

void ProjectSetting::OK_btnSlot()
{
    const ProjectValues values = shownValues();
    if (values.ProjectName.isEmpty() || values.ProjectLocation.isEmpty()) {
        ProjectPrompts::tellEmptyPlace(m_prompt);
        return;
    }
    const QString folder = values.ProjectLocation + QLatin1Char('/') + values.ProjectName;
    for (const QString &path : {folder, folder + QLatin1String(".ZVWP")}) {
        if (!QFileInfo::exists(path))
            continue;
        if (!ProjectPrompts::mayOverwrite(m_prompt, QFileInfo(path).fileName(), overwritingText(values)))
            return;
        break;
    }
    const DesignAnswer sizes = HeapAndStackCheck(values, sramSizeOf(m_design));
    if (!sizes) {
        ProjectPrompts::tellWrongSize(m_prompt, sizes);
        return;
    }
    ToolchainReason reason = toolchainReason(values.getProjectIDE(), m_design.series(), validMiddlewares(m_design));
    if (reason == ToolchainReason::None)
        reason = folderReason(values.getProjectIDE(), values.getProjectFullPath(m_design.file().path()));
    if (reason != ToolchainReason::None) {
        ProjectPrompts::tellToolchainRefused(m_prompt, toolchainReasonText(reason));
        return;
    }
    if (acceptValues() && generateProjectThreadRun())
        accept();
}

bool ProjectSetting::acceptValues()
{
    const ProjectValues values = shownValues();
    for (const QString &name : projectValueNames()) {
        const QString value = projectValue(values, name);
        if (value == projectValue(m_design.project(), name))
            continue;
        const DesignAnswer answer = m_design.apply({QStringLiteral("project"), name, value});
        if (!answer) {
            ProjectPrompts::tellWrongValue(m_prompt, answer);
            return false;
        }
    }
    m_design.setFunctionRank(m_rankPage->rank());
    m_design.setModified(true);
    return true;
}

bool ProjectSetting::generateProjectThreadRun()
{
    const ProjectValues &values = m_design.project();
    const FirmwarePackage package = values.UseFirmware ? chosenPackage() : FirmwarePackage();
    m_LibCompleteFlag = true;
    if (values.UseFirmware) {
        const QString missing = checkPackagePathValid(package, m_design.series(), values.getProjectIDE(),
                                                      projectTemplatePath(m_xml.paths(), m_design.series()));
        m_LibCompleteFlag = missing.isEmpty();
        if (!missing.isEmpty() && !goesOnWithoutPackage(m_prompt, m_design.series(), missing))
            return false;
    }
    if (!checkComponentsPathValid(m_PackageRepositoryPath, validMiddlewares(m_design))) {
        m_LibCompleteFlag = false;
        if (!goesOnWithoutComponents(m_prompt))
            return false;
    }
    const QString folder = values.getProjectFullPath(m_design.file().path());
    m_generation.emplace(m_design, folder + QLatin1String("/project"));
    m_order = projectOrder(m_design, folder, package, m_PackageRepositoryPath, *m_generation);
    if (const GenerationRecord &record = m_generation->record(); !record.ok) {
        ProjectPrompts::tellGenerateFailed(m_prompt, record.error);
        return false;
    }
    m_order.updatePackageVersion = values.PackageVersion != m_BSPVersionForGenerate;
    m_account = runBehindProgress();
    if (!showGenerateProjectError(m_prompt, m_account))
        return false;
    m_projectFullPath = folder;
    m_DesignFilePath = values.getDesignFilePath(m_design.file().path());
    return true;
}

void ProjectSetting::rememberProject() const
{
    ChipLoom::rememberProject(m_order, m_account, *m_generation);
}

BuilderAccount ProjectSetting::runBehindProgress()
{
    QProgressDialog progress(tr("Generate code, Please Waiting..."), tr("Cancel"), 0, 0, this);
    progress.setWindowTitle(QStringLiteral("Chip Loom"));
    progress.setWindowIcon(QIcon(QStringLiteral(":/image/ZevtraIcon")));
    progress.setWindowModality(Qt::WindowModal);
    progress.setFont(Style::font(12));
    // Not by a style sheet: it would cut the text where the bar ends, at other places than the bar on dense displays.
    progress.findChild<QProgressBar *>()->setAlignment(Qt::AlignCenter);
    progress.setAutoClose(false);
    progress.setAutoReset(false);
    progress.setMinimumDuration(0);

    const Scheduler::Hold hold(m_design.scheduler());
    GenerateProjectThread builder(m_order);
    QEventLoop loop;
    connect(&builder, &GenerateProjectThread::progress, &progress, [&progress](int done, int total) {
        progress.setMaximum(total);
        progress.setValue(done);
    });
    connect(&progress, &QProgressDialog::canceled, this, [&builder] { builder.cancel(); });
    connect(&builder, &QThread::finished, &loop, &QEventLoop::quit);
    progress.show();
    builder.start();
    loop.exec();
    builder.wait();
    return builder.account();
}

void ProjectSetting::done(int result)
{
    m_settings.setValue(LocationKey, shownValues().ProjectLocation);
    m_settings.setValue(ToolchainKey, m_comboBoxIDE->currentText());
    QDialog::done(result);
}

} // namespace ChipLoom
