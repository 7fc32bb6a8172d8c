// The controls of the project dialog.

#include "Gui/App/Style.h"
#include "Gui/Project/FunctionRankPage.h"
#include "Gui/Project/ProjectSetting.h"
#include "Gui/Widgets/VerticalScroll.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

namespace ChipLoom {

namespace {

template <typename Widget> Widget *named(Widget *widget, const char *name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLineEdit *sizeField(const char *name, QWidget *parent)
{
    auto *field = named(new QLineEdit, name);
    field->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9A-Fa-fXx]+$")), parent));
    return field;
}

} // namespace

void ProjectSetting::createLayout()
{
    m_TabWidget = named(new QTabWidget, "m_TabWidget");
    m_TabWidget->addTab(createProjectPage(), tr("Project"));
    m_rankPage = new FunctionRankPage(m_prompt);
    m_TabWidget->addTab(m_rankPage, tr("Advanced"));

    m_folderLabel = named(new QLabel, "m_folderLabel");
    m_folderLabel->setTextFormat(Qt::PlainText);
    m_folderLabel->setWordWrap(true);
    m_folderLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    Style::setRole(m_folderLabel, Style::Role::Hint);
    m_okButton = named(new QPushButton(tr("OK")), "m_okButton");
    m_okButton->setDefault(true);
    Style::setRole(m_okButton, Style::Role::Action);
    auto *cancel = named(new QPushButton(tr("Cancel")), "m_cancelButton");
    connect(m_okButton, &QPushButton::clicked, this, &ProjectSetting::OK_btnSlot);
    connect(cancel, &QPushButton::clicked, this, &ProjectSetting::reject);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_folderLabel, 1);
    buttons->addWidget(m_okButton);
    buttons->addWidget(cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_TabWidget);
    layout->addLayout(buttons);
    // On a small screen the page scrolls, and the buttons stay in sight.
    const QSize screenSize = screen()->availableGeometry().size();
    resize(sizeHint().boundedTo(screenSize - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight))));
}

QWidget *ProjectSetting::createProjectPage()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(createPlaceGroup());
    layout->addWidget(createCodeGroup());
    layout->addWidget(createLinkerGroup());
    layout->addWidget(createFirmwareGroup());
    layout->addStretch();
    auto *scroll = new VerticalScroll;
    scroll->setWidget(page);
    scroll->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    return scroll;
}

QGroupBox *ProjectSetting::createPlaceGroup()
{
    m_lineEditProjName = named(new QLineEdit, "m_lineEditProjName");
    m_lineEditProjLocation = named(new QLineEdit, "m_lineEditProjLocation");
    m_btnBrowseProjLocation = named(new QPushButton(tr("Browse")), "m_btnBrowseProjLocation");
    m_comboBoxIDE = named(new QComboBox, "m_comboBoxIDE");
    m_comboBoxAC5_AC6 = named(new QComboBox, "m_comboBoxAC5_AC6");
    m_compilerLabel = new QLabel(tr("ARM Compiler"));
    m_comboBoxAC5_AC6->addItem(tr("Use default complier version 5"), QStringLiteral("Use default complier version 5"));
    m_comboBoxAC5_AC6->addItem(tr("Use default complier version 6"), QStringLiteral("Use default complier version 6"));

    auto *location = new QHBoxLayout;
    location->addWidget(m_lineEditProjLocation);
    location->addWidget(m_btnBrowseProjLocation);
    auto *group = new QGroupBox(tr("Project"));
    auto *form = new QFormLayout(group);
    form->addRow(tr("Project Name"), m_lineEditProjName);
    form->addRow(tr("Project Location"), location);
    form->addRow(tr("Toolchain/IDE"), m_comboBoxIDE);
    form->addRow(m_compilerLabel, m_comboBoxAC5_AC6);

    connect(m_lineEditProjName, &QLineEdit::textChanged, this, &ProjectSetting::showFolder);
    connect(m_lineEditProjLocation, &QLineEdit::textChanged, this, &ProjectSetting::showFolder);
    connect(m_btnBrowseProjLocation, &QPushButton::clicked, this, &ProjectSetting::browseLocation);
    connect(m_comboBoxIDE, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        const bool choice = IDE_TYPE(m_comboBoxIDE->currentData().toInt()) == IDE_MDK_V5;
        m_compilerLabel->setVisible(choice);
        m_comboBoxAC5_AC6->setVisible(choice);
    });
    return group;
}

QGroupBox *ProjectSetting::createCodeGroup()
{
    m_checkBackupCode =
        named(new QCheckBox(tr("Backup previously generated files when re-generating")), "m_checkBackupCode");
    m_checkKeepUserCode = named(new QCheckBox(tr("Keep User Code when re-generating")), "m_checkKeepUserCode");
    m_checkNotUsedPinAnalog = named(new QCheckBox(tr("Set all free pins as analog")), "m_checkNotUsedPinAnalog");
    m_checkCodeSplit =
        named(new QCheckBox(tr("Generate peripheral initialization as a pair of '.c/.h' files per peripheral")),
              "m_checkCodeSplit");
    m_checkDeletePriviousFiles = named(new QCheckBox(tr("Delete previously generated files when not re-generated")),
                                       "m_checkDeletePriviousFiles");
    m_addAll_RadioButton =
        named(new QRadioButton(tr("Add all firmware libraries files into the project")), "m_addAll_RadioButton");
    m_addNecessary_RadioButton =
        named(new QRadioButton(tr("Add only the necessary firmware libraries files into the project")),
              "m_addNecessary_RadioButton");

    auto *group = new QGroupBox(tr("Code"));
    auto *layout = new QVBoxLayout(group);
    layout->setSpacing(2);
    for (QWidget *control : std::initializer_list<QWidget *>{
             m_checkBackupCode, m_checkKeepUserCode, m_checkNotUsedPinAnalog, m_checkCodeSplit,
             m_checkDeletePriviousFiles, m_addAll_RadioButton, m_addNecessary_RadioButton})
        layout->addWidget(control);
    return group;
}

QGroupBox *ProjectSetting::createLinkerGroup()
{
    m_lineEditMinHeapSize = sizeField("m_lineEditMinHeapSize", this);
    m_lineEditMinStackSize = sizeField("m_lineEditMinStackSize", this);
    auto *group = new QGroupBox(tr("Linker"));
    auto *row = new QHBoxLayout(group); // one, so that the dialog fits on low screens
    const std::pair<QString, QLineEdit *> fields[] = {{tr("Minimum Heap Size (0x)"), m_lineEditMinHeapSize},
                                                      {tr("Minimum Stack Size (0x)"), m_lineEditMinStackSize}};
    for (const auto &[text, field] : fields) {
        auto *label = new QLabel(text);
        label->setBuddy(field);
        row->addWidget(label);
        row->addWidget(field);
    }
    return group;
}

QGroupBox *ProjectSetting::createFirmwareGroup()
{
    m_checkUseFirmware = named(new QCheckBox(tr("Copy the firmware package into the project")), "m_checkUseFirmware");
    m_comboBoxPackageVersion = named(new QComboBox, "m_comboBoxPackageVersion");
    m_lineEditFirmwarePath = named(new QLineEdit, "m_lineEditFirmwarePath");
    m_lineEditFirmwarePath->setReadOnly(true);
    m_lineEditFirmwarePath->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    m_btnBrowseRepository = named(new QPushButton(tr("Browse")), "m_btnBrowseRepository");
    m_btnBrowseRepository->setToolTip(tr("Choose the folder in which firmware packages are kept"));
    auto *path = new QHBoxLayout;
    path->addWidget(m_lineEditFirmwarePath);
    path->addWidget(m_btnBrowseRepository);
    auto *group = new QGroupBox(tr("Firmware"));
    auto *form = new QFormLayout(group);
    form->addRow(m_checkUseFirmware);
    form->addRow(tr("Package version"), m_comboBoxPackageVersion);
    form->addRow(tr("Package path"), path);
    connect(m_btnBrowseRepository, &QPushButton::clicked, this, &ProjectSetting::browseRepository);
    connect(m_checkUseFirmware, &QCheckBox::stateChanged, this, &ProjectSetting::FirmwareConfigEnable);
    connect(m_comboBoxPackageVersion, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ProjectSetting::PackageVersionChanged_comboBoxSlot);
    return group;
}

} // namespace ChipLoom
