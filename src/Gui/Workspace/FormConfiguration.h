#pragma once

#include "Design/Design.h"
#include "Design/RecoveryCopy.h"
#include "Gui/App/Settings.h"
#include "Model/xmloperation.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>

class QLabel;
class QMenu;
class QPushButton;
class QSplitter;
class QStackedWidget;
class QTranslator;

namespace ChipLoom {

class ChipView;
class ConfigurationPane;
class FileChooser;
class PeripheralsConfig;
class ZV32PLLConfigPage;

/// The workspace: the window over the one open design. It lives as long as the program and is filled and emptied for
/// each design; it decides nothing that the design could decide.
class FormConfiguration : public QMainWindow
{
    Q_OBJECT
public:
    /// `settings` and `prompt` outlive the window.
    FormConfiguration(const XMLOperation &xml, Settings &settings, UserPrompt &prompt, QWidget *parent = nullptr);
    ~FormConfiguration() override;

    /// Whether unsaved changes lie in a copy as they are now.
    bool hasRecoveryCopy() const { return m_recovery.isCurrent(); }

    /// The installed translator, which outlives the window. Without one the language cannot be switched here.
    void SetQTranslator(QTranslator *translator) { m_translator = translator; }
    /// Takes texts of the current language, in the window and in the design.
    void TranslatorUI();

    /// Empties the window and fills it for a device. A device file that cannot be read gives an empty chip view; false
    /// then. `package` is the catalogue's text, as "LQFP48".
    bool NewDesign(const QString &series, const QString &device, const QString &package);
    /// Empties the window.
    void DeleteOldConfigWidget();

    /// Fills the window from a file. What the file holds wrong is told; one that holds no design of a known device
    /// leaves the window as it is. False then.
    bool OpenDesign(const QString &path);
    /// The same from the recovery copy of another run; the design has unsaved changes.
    bool OpenRecoveryCopy(const QString &copy);
    /// Lets the user choose a design file; empty if he does not.
    QString chooseDesign(QWidget *parent);
    /// The questions before a design of the list of recent ones is opened: true if it may.
    bool mayOpenListed(const QString &path);
    /// Where files are chosen; `chooser` outlives the window.
    void setFileChooser(FileChooser &chooser) { m_fileChooser = &chooser; }

    Design &design() { return m_design; }
    ZV32PLLConfigPage *clockPage() const { return m_clockConfigForm; }
    ChipView *chipView() const { return m_PinLayoutView; }
    PeripheralsConfig *moduleTree() const { return m_PeripheralsConfig; }
    ConfigurationPane *configurationPane() const { return m_ModeAndConfiguration; }

public slots:
    void NewProject_Action_Triggered();
    void OpenProject_Action_Triggered();
    void SaveProject_Action_Triggered();
    void SaveAsProject_Action_Triggered();
    /// Checks, asks for the project, builds it and generates the code.
    void GeneralCode_Action_Triggered();
    void OpenDesign_List_Clicked(const QString &path);
    void English_Action_Triggered();
    void Chinese_Action_Triggered();
    void PINConfig_PushButton_Clicked();
    void ClockConfig_PushButton_Clicked();
    void AllConfigReset();
    /// Shows the configuration pane of a module and marks its pins.
    void GetSelectIPName(const QString &instanceName);

signals:
    /// The user left the design: the home window takes over.
    void Send_NewDesign_Signal();

protected:
    void closeEvent(QCloseEvent *event) override;
    /// From the tree through the page of the module to the drawing, whichever was made first.
    bool focusNextPrevChild(bool next) override;

private:
    void createPages();
    void showPage(QWidget *page, QPushButton *button, const QList<QAction *> &tools);
    void showClockError(bool error);
    void createMenus();
    void showModules();
    void showDeviceName();
    void LanguageChangeFunc(LANGUAGE language);
    /// The question before a design goes: true if it may.
    bool mayCloseDesign(QLatin1String question);
    bool openWith(const std::function<bool()> &open);
    void tellOpeningProblems();
    void CreateResentlyDesignMenu();
    /// Saves to the file in use, or to one that the user chooses: true once the design is on the disk.
    bool SaveProject_Operation();
    QString chooseTarget();
    /// What stands typed in a field counts, as if the field were left; what waits for Return on the clock page is given
    /// back, or the user goes there: false then.
    bool takeTypedText();
    bool saveTo(const QString &path);
    void rememberDesign();
    void showSignalOwner(const QString &signalName, int pinNumber);
    void selectPinRow(const QString &signalName, int pinNumber);

    XMLOperation m_xmlOperation;
    Settings &m_settings;
    UserPrompt &m_prompt;
    QTranslator *m_translator = nullptr;
    Design m_design;
    RecoveryCopy m_recovery;
    QTimer m_recoveryTimer;
    FileChooser *m_fileChooser;

    QLabel *m_deviceName;
    QPushButton *m_PINConfig_PushButton;
    QPushButton *m_ClockConfig_PushButton;
    QStackedWidget *m_pages;
    QSplitter *m_pinConfigForm;
    ZV32PLLConfigPage *m_clockConfigForm;
    PeripheralsConfig *m_PeripheralsConfig;
    ConfigurationPane *m_ModeAndConfiguration;
    ChipView *m_PinLayoutView;

    QMenu *m_fileMenu;
    QMenu *m_recentMenu;
    QMenu *m_viewMenu;
    QAction *m_toolSeparator;
    QList<QAction *> m_pageTools; ///< in the menu now
    QMenu *m_languageMenu;
    QAction *m_newDesignAction;
    QAction *m_openDesignAction;
    QAction *m_saveDesignAction;
    QAction *m_saveAsAction;
    QAction *m_generateAction;
    QAction *m_resetAction;
    QAction *m_englishAction;
    QAction *m_chineseAction;
};

} // namespace ChipLoom
