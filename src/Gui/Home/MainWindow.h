#pragma once

#include "Gui/App/Settings.h"
#include "Model/xmloperation.h"

#include <QWidget>

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

public slots:
    void NewDisplay_PushButton_Clicked();
    void ListDisplay_PushButton_Clicked();
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
    Page m_newDesignPage;
    Page m_designListPage;
};

} // namespace ChipLoom
