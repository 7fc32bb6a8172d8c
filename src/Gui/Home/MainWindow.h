#pragma once

#include "Gui/App/Settings.h"
#include "Model/xmloperation.h"

#include <QWidget>

#include <functional>
#include <memory>

class QComboBox;
class QGroupBox;
class QLabel;
class QLayout;
class QPushButton;
class QTranslator;

namespace ChipLoom {

class DeviceSelection;
class FormConfiguration;
class RecentDesignsPage;

/// The home window, from which a design is started: a column of pages of which one is unfolded. It owns the workspace;
/// the two are shown in turn.
class MainWindow : public QWidget
{
    Q_OBJECT
public:
    /// Reads the catalogue. `prompt` must outlive the window.
    MainWindow(const XMLOperation &xml, UserPrompt &prompt, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// The language in which the window comes up; the texts themselves are the translator's.
    void SetLanguage(LANGUAGE language);
    /// The installed translator, which outlives the window.
    void SetQTranslator(QTranslator *translator) { m_translator = translator; }

    /// Opens the file that the program was started with.
    void OpenDesignFromDoubleClickFile(const QString &path);
    /// Offers what an earlier run of the program left unsaved when it crashed or was killed. True if the user took one.
    bool offerRecovery();
    FormConfiguration &workspace() { return *m_subwin; }

public slots:
    void NewDisplay_PushButton_Clicked();
    void OpenDisplay_PushButton_Clicked();
    void ListDisplay_PushButton_Clicked();
    /// Lets the user choose a design file and opens it.
    void OpenDesign_PushButton_Clicked();
    /// Opens a design of the list of recent ones, after the questions that this takes.
    void OpenDesign_List_Clicked(const QString &path);
    void Language_ComboBox_IndexChanged(int index);
    /// The workspace was left: the home window returns on the page of new designs.
    void SubWin_NewDesign_Slot();

private:
    struct Page
    {
        QPushButton *header;
        QGroupBox *box;
        const char *title; // translated where shown
    };

    QWidget *CreateTopLayout();
    QLayout *CreateLanguageLayout();
    QLayout *CreateDownLayout();
    Page createPage(QWidget *content, const char *title);
    void ConnectUIControlSlot();
    void setInitialSize();
    void readSettings();
    void startDesign(const QString &series, const QString &device, const QString &package);
    bool openDesign(const std::function<bool()> &open);
    QWidget *CreateOpenDesignLayout();
    /// Unfolds one page and folds the others.
    void showPage(const Page &shown);
    QList<Page> pages() const;
    void TranslatorUI();

    XMLOperation m_xmlOperation;
    UserPrompt &m_prompt;
    Settings m_settings;
    std::unique_ptr<FormConfiguration> m_subwin; // empty until a design starts
    bool m_NewDesigning = false;
    QTranslator *m_translator = nullptr;

    QLabel *m_language_Label;
    QComboBox *m_language_ComboBox;
    QLabel *m_welcome_Label;
    DeviceSelection *m_deviceSelection;
    RecentDesignsPage *m_recentDesigns;
    QPushButton *m_openDesign_PushButton;
    Page m_newDesignPage;
    Page m_openDesignPage;
    Page m_designListPage;
};

} // namespace ChipLoom
