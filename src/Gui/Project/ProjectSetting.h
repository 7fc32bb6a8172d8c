#pragma once

#include "Design/Design.h"
#include "GenerateCode/CodeGeneration.h"
#include "Gui/App/FileChooser.h"
#include "Gui/App/Settings.h"
#include "Packages/FirmwarePackages.h"
#include "Project/ProjectOrder.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace ChipLoom {

class FunctionRankPage;

/// The project dialog. It shows a copy of what the design says of its project; OK puts it into the design, and builds
/// the project behind a progress bar. Accepted once that is done; the caller generates the code then.
class ProjectSetting : public QDialog
{
    Q_OBJECT
public:
    /// All of them outlive the dialog. A design is open.
    ProjectSetting(Design &design, const XMLOperation &xml, Settings &settings, UserPrompt &prompt, FileChooser &files,
                   QWidget *parent = nullptr);

    // What the generation asks once the dialog was accepted.
    /// Of the code, which is made and not written.
    CodeGeneration &getGeneration() { return *m_generation; }
    QString getProjectFullPath() const { return m_projectFullPath; }
    QString getDesignFilePath() const { return m_DesignFilePath; }
    /// Whether package and components were complete.
    bool getLibCompleteFlag() const { return m_LibCompleteFlag; }
    /// Of the builder.
    const BuilderAccount &getAccount() const { return m_account; }
    /// Once the code has been written.
    void rememberProject() const;

    void done(int result) override;

private:
    void createLayout();
    QWidget *createProjectPage();
    QGroupBox *createPlaceGroup();
    QGroupBox *createCodeGroup();
    QGroupBox *createLinkerGroup();
    QGroupBox *createFirmwareGroup();
    void showValues(const ProjectValues &values);
    ProjectValues shownValues() const;
    void IDEType_Items_Valid_Manage();
    void updatePackageVersionComboBox(const QString &version);
    void PackageVersionChanged_comboBoxSlot();
    void FirmwareConfigEnable(int state);
    void browseLocation();
    void browseRepository();
    void updateRepoPath(const QString &folder);
    void showFolder();
    /// What becomes of the files that stand where the project goes.
    QString overwritingText(const ProjectValues &values) const;
    void OK_btnSlot();
    bool acceptValues();
    bool generateProjectThreadRun();
    BuilderAccount runBehindProgress();
    FirmwarePackage chosenPackage() const;

    Design &m_design;
    XMLOperation m_xml;
    Settings &m_settings;
    UserPrompt &m_prompt;
    FileChooser &m_files;
    QString m_PackageRepositoryPath;
    QString m_BSPVersionForGenerate; ///< of the former generation
    QString m_projectFullPath;
    QString m_DesignFilePath;
    QList<FirmwarePackage> m_packages;
    bool m_LibCompleteFlag = false;
    ProjectOrder m_order;
    BuilderAccount m_account; ///< of the last build
    std::optional<CodeGeneration> m_generation;

    QTabWidget *m_TabWidget;
    QLineEdit *m_lineEditProjName;
    QLineEdit *m_lineEditProjLocation;
    QPushButton *m_btnBrowseProjLocation;
    QLabel *m_folderLabel;
    QComboBox *m_comboBoxIDE;
    QLabel *m_compilerLabel;
    QComboBox *m_comboBoxAC5_AC6;
    QCheckBox *m_checkBackupCode;
    QCheckBox *m_checkKeepUserCode;
    QCheckBox *m_checkNotUsedPinAnalog;
    QCheckBox *m_checkCodeSplit;
    QCheckBox *m_checkDeletePriviousFiles;
    QRadioButton *m_addAll_RadioButton;
    QRadioButton *m_addNecessary_RadioButton;
    QLineEdit *m_lineEditMinHeapSize;
    QLineEdit *m_lineEditMinStackSize;
    QCheckBox *m_checkUseFirmware;
    QComboBox *m_comboBoxPackageVersion;
    QLineEdit *m_lineEditFirmwarePath;
    QPushButton *m_btnBrowseRepository;
    FunctionRankPage *m_rankPage;
    QPushButton *m_okButton;
};

} // namespace ChipLoom
