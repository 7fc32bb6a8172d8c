#include "Gui/Home/MainWindow.h"

#include "Base/Version.h"
#include "Design/RecoveryCopy.h"
#include "Gui/App/Language.h"
#include "Gui/App/Style.h"
#include "Gui/Home/DeviceSelection.h"
#include "Gui/Home/RecentDesignsPage.h"
#include "Gui/Workspace/FormConfiguration.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>

namespace ChipLoom {

MainWindow::MainWindow(const XMLOperation &xml, UserPrompt &prompt, QWidget *parent)
    : QWidget(parent), m_xmlOperation(xml), m_prompt(prompt), m_settings(xml, prompt),
      m_subwin(std::make_unique<FormConfiguration>(xml, m_settings, prompt))
{
    setWindowTitle(QStringLiteral("ZV32 Chip Loom ") + QLatin1String(ProgramVersion));

    auto *content = new QWidget;
    Style::setRole(content, Style::Role::Window);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(CreateTopLayout());
    column->addLayout(CreateLanguageLayout());
    column->addLayout(CreateDownLayout(), 1);

    auto *scrollArea = new QScrollArea;
    scrollArea->setFrameShape(QFrame::NoFrame);
    scrollArea->setFocusPolicy(Qt::NoFocus);
    scrollArea->setWidgetResizable(true);
    scrollArea->setWidget(content);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(scrollArea);

    TranslatorUI();
    setInitialSize();
    readSettings();
    ConnectUIControlSlot();
    NewDisplay_PushButton_Clicked();
    m_deviceSelection->setFocus();
}

MainWindow::~MainWindow() = default;

QWidget *MainWindow::CreateTopLayout()
{
    auto *bar = new QWidget;
    Style::setRole(bar, Style::Role::TitleBar);
    auto *logo = new QLabel;
    logo->setPixmap(QPixmap(QStringLiteral(":/image/Logo_1.png")));
    auto *title = new QLabel(QStringLiteral("        ZV32 Chip Loom"));
    title->setFont(Style::font(18, true));
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(16, 6, 16, 6);
    layout->addWidget(logo);
    layout->addWidget(title);
    layout->addStretch();
    return bar;
}

QLayout *MainWindow::CreateLanguageLayout()
{
    m_language_Label = new QLabel;
    m_language_ComboBox = new QComboBox;
    m_language_ComboBox->addItems({QString(), QString()}); // in the order of LANGUAGE
    m_language_ComboBox->setObjectName(QStringLiteral("language"));
    m_language_Label->setBuddy(m_language_ComboBox);
    m_welcome_Label = new QLabel;
    Style::setRole(m_welcome_Label, Style::Role::Hint);
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(16, 2, 16, 2);
    layout->addWidget(m_welcome_Label, 1);
    layout->addWidget(m_language_Label);
    layout->addWidget(m_language_ComboBox);
    return layout;
}

QLayout *MainWindow::CreateDownLayout()
{
    m_deviceSelection = new DeviceSelection(m_xmlOperation);
    m_recentDesigns = new RecentDesignsPage(m_xmlOperation.paths().recentDesignsFile());
    m_newDesignPage = createPage(m_deviceSelection, QT_TR_NOOP("Start a new Design"));
    m_openDesignPage = createPage(CreateOpenDesignLayout(), QT_TR_NOOP("Open an Existing Design"));
    m_designListPage = createPage(m_recentDesigns, QT_TR_NOOP("Recent Designs"));

    auto *layout = new QVBoxLayout;
    layout->setContentsMargins(16, 0, 16, 12);
    for (const Page &page : pages()) {
        layout->addWidget(page.header);
        layout->addWidget(page.box, 1);
    }
    // Where the unfolded page needs no height, the headers stay at the top.
    layout->addStretch();
    return layout;
}

QWidget *MainWindow::CreateOpenDesignLayout()
{
    auto *page = new QWidget;
    m_openDesign_PushButton = new QPushButton;
    m_openDesign_PushButton->setObjectName(QStringLiteral("openDesign"));
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(m_openDesign_PushButton, 0, Qt::AlignLeft);
    layout->addStretch();
    return page;
}

MainWindow::Page MainWindow::createPage(QWidget *content, const char *title)
{
    const Page page{new QPushButton, new QGroupBox, title};
    Style::setRole(page.header, Style::Role::PageHeader);
    Style::setRole(page.box, Style::Role::Panel);
    auto *layout = new QVBoxLayout(page.box);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(content);
    return page;
}

void MainWindow::ConnectUIControlSlot()
{
    connect(m_newDesignPage.header, &QPushButton::clicked, this, &MainWindow::NewDisplay_PushButton_Clicked);
    connect(m_openDesignPage.header, &QPushButton::clicked, this, &MainWindow::OpenDisplay_PushButton_Clicked);
    connect(m_openDesign_PushButton, &QPushButton::clicked, this, &MainWindow::OpenDesign_PushButton_Clicked);
    connect(m_recentDesigns, &RecentDesignsPage::designChosen, this, &MainWindow::OpenDesign_List_Clicked,
            Qt::QueuedConnection); // opening makes the list anew, under the line that tells of the click
    connect(m_designListPage.header, &QPushButton::clicked, this, &MainWindow::ListDisplay_PushButton_Clicked);
    connect(m_language_ComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &MainWindow::Language_ComboBox_IndexChanged);
    connect(m_deviceSelection, &DeviceSelection::deviceChosen, this, &MainWindow::startDesign);
    connect(m_subwin.get(), &FormConfiguration::Send_NewDesign_Signal, this, &MainWindow::SubWin_NewDesign_Slot);
}

void MainWindow::setInitialSize()
{
    const QRect available = screen()->availableGeometry();
    // The frame is the window manager's and not known yet: room is left for a title bar.
    const int titleBar = style()->pixelMetric(QStyle::PM_TitleBarHeight);
    resize(qMin(1350, available.width()), available.height() - titleBar);
    move(available.topLeft());
}

void MainWindow::readSettings()
{
    const QString key = QStringLiteral("UserGuideInstallPath");
    if (m_settings.value(key).isEmpty())
        m_settings.setValue(key, m_xmlOperation.paths().defaultPackageDir());
}

void MainWindow::SetLanguage(LANGUAGE language)
{
    const QSignalBlocker blocker(m_language_ComboBox);
    m_language_ComboBox->setCurrentIndex(language);
}

QList<MainWindow::Page> MainWindow::pages() const
{
    return {m_newDesignPage, m_openDesignPage, m_designListPage};
}

void MainWindow::NewDisplay_PushButton_Clicked()
{
    showPage(m_newDesignPage);
}

void MainWindow::OpenDisplay_PushButton_Clicked()
{
    showPage(m_openDesignPage);
}

void MainWindow::ListDisplay_PushButton_Clicked()
{
    m_recentDesigns->CreateDesignListLayout();
    showPage(m_designListPage);
}

void MainWindow::showPage(const Page &shown)
{
    for (const Page &page : pages()) {
        const bool unfolded = page.box == shown.box;
        page.box->setVisible(unfolded);
        page.header->setIcon(QIcon(unfolded ? QStringLiteral(":/image/icon_down_white.png")
                                            : QStringLiteral(":/image/icon_right_white.png")));
    }
}

void MainWindow::Language_ComboBox_IndexChanged(int index)
{
    const LANGUAGE language = index == UI_CH ? UI_CH : UI_EN;
    if (!switchLanguage(m_translator, language))
        return;
    TranslatorUI();
    m_subwin->TranslatorUI();
    m_settings.setValue(QStringLiteral("Language"), languageSetting(language));
}

void MainWindow::startDesign(const QString &series, const QString &device, const QString &package)
{
    if (m_NewDesigning)
        return;
    const QScopedValueRollback<bool> designing(m_NewDesigning, true);
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_subwin->SetQTranslator(m_translator);
    const bool readable = m_subwin->NewDesign(series, device, package);
    m_subwin->show();
    QGuiApplication::restoreOverrideCursor();
    hide();
    if (!readable)
        m_prompt.tell(PromptRequest::Kind::Critical, QT_TRANSLATE_NOOP("Prompt", "Error"),
                      QT_TRANSLATE_NOOP("Prompt", "The description of the device cannot be read."),
                      QDir::toNativeSeparators(m_xmlOperation.deviceFile(series, device)));
}

void MainWindow::OpenDesign_PushButton_Clicked()
{
    const QString path = m_subwin->chooseDesign(this);
    if (!path.isEmpty())
        OpenDesignFromDoubleClickFile(path);
}

void MainWindow::OpenDesign_List_Clicked(const QString &path)
{
    if (m_subwin->mayOpenListed(path))
        OpenDesignFromDoubleClickFile(path);
}

void MainWindow::OpenDesignFromDoubleClickFile(const QString &path)
{
    openDesign([this, &path] { return m_subwin->OpenDesign(path); });
}

bool MainWindow::openDesign(const std::function<bool()> &open)
{
    if (m_NewDesigning)
        return false;
    const QScopedValueRollback<bool> designing(m_NewDesigning, true);
    m_subwin->SetQTranslator(m_translator);
    if (!open())
        return false;
    m_subwin->show();
    hide();
    return true;
}

bool MainWindow::offerRecovery()
{
    std::vector<AbandonedCopy> copies = AbandonedCopy::all(m_xmlOperation.paths().recoveryDir());
    for (AbandonedCopy &copy : copies) {
        PromptRequest request;
        request.kind = PromptRequest::Kind::Question;
        request.title = QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Question"));
        request.text = QLatin1String(QT_TRANSLATE_NOOP(
            "Prompt", "The program ended before a design was saved. Would you like to open what is left of it? \"No\" "
                      "throws it away."));
        request.detail = copy.origin().isEmpty() ? tr("The design had not been saved yet.")
                                                 : QDir::toNativeSeparators(copy.origin());
        request.buttons = QStringList{QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Yes")),
                                      QLatin1String(QT_TRANSLATE_NOOP("Prompt", "No")),
                                      QLatin1String(QT_TRANSLATE_NOOP("Prompt", "Cancel"))};
        const int answer = m_prompt.ask(request);
        if (answer == 1)
            copy.remove();
        if (answer != 0 || !openDesign([this, &copy] { return m_subwin->OpenRecoveryCopy(copy.file()); }))
            continue;
        // The workspace keeps a copy of its own by now, unless it could not be written.
        if (m_subwin->hasRecoveryCopy())
            copy.remove();
        return true;
    }
    return false;
}

void MainWindow::SubWin_NewDesign_Slot()
{
    NewDisplay_PushButton_Clicked();
    SetLanguage(GlobalLanguage::g_CurrentLanguage);
    TranslatorUI();
    setWindowModality(Qt::ApplicationModal);
    show();
    m_deviceSelection->setFocus(Qt::TabFocusReason); // the next device is typed over the last search
}

void MainWindow::TranslatorUI()
{
    m_language_Label->setText(tr("Language:"));
    m_language_ComboBox->setItemText(UI_EN, tr("English"));
    m_language_ComboBox->setItemText(UI_CH, tr("Chinese"));
    m_welcome_Label->setText(tr("Welcome. Choose a device to start a design with."));
    for (const Page &page : pages())
        page.header->setText(tr(page.title));
    m_openDesign_PushButton->setText(tr("Open"));
    m_deviceSelection->TranslatorUI();
    m_recentDesigns->TranslatorUI();
}

} // namespace ChipLoom
