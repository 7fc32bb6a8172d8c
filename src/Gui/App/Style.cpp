#include "Gui/App/Style.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QVariant>

#include <utility>

namespace ChipLoom::Style {

namespace {

constexpr std::array<const char *, 16> RoleNames{"",        "window", "titleBar",  "action",     "pageHeader", "page",
                                                 "link",    "entry",  "panel",     "panelTitle", "hint",       "good",
                                                 "warning", "error",  "toolStrip", "canvas"};

QString g_arrowFontFamily;

// Tokens "@name" are replaced by the colours below.
constexpr const char *Sheet = R"(
[role="window"] { background: @window; }
[role="titleBar"] { background: white; border-bottom: 2px solid @accent; }

QPushButton[role="action"] {
    background: @action; color: white; font-weight: bold;
    border: 2px solid @action; border-radius: 4px; padding: 5px 18px;
}
QPushButton[role="action"]:hover { background: @actionLight; }
QPushButton[role="action"]:pressed { background: @actionDark; }
QPushButton[role="action"]:focus { border-color: @focus; }
QPushButton[role="action"]:disabled { background: @line; border-color: @line; color: @muted; }

QPushButton[role="pageHeader"] {
    background: @accent; color: white; font-weight: bold; text-align: left;
    border: 2px solid @accent; border-radius: 4px; padding: 5px 10px;
}
QPushButton[role="pageHeader"]:hover { background: @accentDark; border-color: @accentDark; }
QPushButton[role="pageHeader"]:focus { border-color: @focus; }

QPushButton[role="page"] {
    background: @pageIdle; color: white; font-weight: bold;
    border: 2px solid @pageIdle; border-radius: 4px; padding: 5px 18px;
}
QPushButton[role="page"]:hover { border-color: @accent; }
QPushButton[role="page"][chosen="true"] { background: @accent; border-color: @accent; }
QPushButton[role="page"]:focus { border-color: @focus; }
QPushButton[role="page"]:disabled { background: @line; border-color: @line; color: @muted; }

QPushButton[role="link"] {
    background: transparent; color: @link; text-align: left;
    border: 1px solid transparent; border-radius: 3px; padding: 3px 6px;
}
QPushButton[role="link"]:hover { text-decoration: underline; }
QPushButton[role="link"]:focus { border-color: @highlight; }
QPushButton[role="link"]:disabled { color: @muted; }

QLabel[role="entry"] { border: 1px solid transparent; border-radius: 3px; padding: 3px 6px; }
QLabel[role="entry"]:focus { border-color: @highlight; }

QFrame[role="panel"], QGroupBox[role="panel"] { background: white; border: 1px solid @line; border-radius: 4px; }
QLabel[role="panelTitle"] { font-weight: bold; }
QLabel[role="hint"] { color: @muted; }
QLabel[role="good"] { color: @positive; }
QLabel[role="warning"] { color: @caution; }
QLabel[role="error"] { color: @negative; }

QLineEdit[invalid="true"], QComboBox[invalid="true"] { color: @negative; }

QTreeView, QTableView, QTextBrowser { border: 1px solid @line; }
QTreeView:focus, QTableView:focus, QTextBrowser:focus { border-color: @highlight; }

QGroupBox[role="toolStrip"] { background: @window; border: none; }
QGroupBox[role="toolStrip"] QToolBar { background: @window; border: none; }

QGraphicsView[role="canvas"] { background: white; border: none; }
QGraphicsView[role="canvas"] QScrollBar:vertical { width: 12px; background: rgb(217, 233, 246); }
QGraphicsView[role="canvas"] QScrollBar:horizontal { height: 12px; background: rgb(217, 233, 246); }
QGraphicsView[role="canvas"] QScrollBar::handle { background: rgb(139, 207, 215); border-radius: 5px; margin: 1px; }
QGraphicsView[role="canvas"] QScrollBar::handle:vertical { min-height: 32px; }
QGraphicsView[role="canvas"] QScrollBar::handle:horizontal { min-width: 32px; }
QGraphicsView[role="canvas"] QScrollBar::add-line, QGraphicsView[role="canvas"] QScrollBar::sub-line {
    width: 0; height: 0;
}
QGraphicsView[role="canvas"] QScrollBar::add-page, QGraphicsView[role="canvas"] QScrollBar::sub-page {
    background: none;
}

QHeaderView::section {
    background: @header; color: black; padding: 4px;
    border: none; border-right: 1px solid @line; border-bottom: 1px solid @line;
}
QHeaderView::section:hover { background: @headerHover; }
)";

QString styleSheet()
{
    const std::vector<std::pair<const char *, QColor>> tokens{
        // A name that another one begins with stands behind it.
        {"@actionLight", Action.lighter(108)},
        {"@actionDark", Action.darker(115)},
        {"@action", Action},
        {"@accentDark", Accent.darker(110)},
        {"@accent", Accent},
        {"@headerHover", WindowBackground.darker(112)},
        {"@header", WindowBackground.darker(105)},
        {"@highlight", Highlight},
        {"@window", WindowBackground},
        {"@pageIdle", PageIdle},
        {"@line", Line},
        {"@link", QColor(0, 0, 255)},
        {"@muted", Muted},
        {"@focus", QColor(16, 42, 67)},
        {"@positive", Positive},
        {"@caution", Caution},
        {"@negative", Negative},
    };
    QString sheet = QLatin1String(Sheet);
    for (const auto &[token, colour] : tokens)
        sheet.replace(QLatin1String(token), colour.name());
    return sheet;
}

QPalette palette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(240, 240, 240));
    palette.setColor(QPalette::WindowText, Qt::black);
    palette.setColor(QPalette::Base, QColor(255, 255, 255));
    palette.setColor(QPalette::AlternateBase, QColor(245, 245, 245));
    palette.setColor(QPalette::ToolTipBase, QColor(255, 255, 220));
    palette.setColor(QPalette::ToolTipText, Qt::black);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Button, QColor(240, 240, 240));
    palette.setColor(QPalette::ButtonText, Qt::black);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::Link, QColor(0, 0, 255));
    palette.setColor(QPalette::Highlight, Highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
    return palette;
}

void setProperty(QWidget *widget, const char *name, const QVariant &value)
{
    const QVariant present = widget->property(name);
    if (present.isValid() ? present == value : value == QVariant(value.userType(), nullptr))
        return;
    widget->setProperty(name, value);
    // What has not been shown yet takes the sheet when it is.
    if (!widget->testAttribute(Qt::WA_WState_Polished))
        return;
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

} // namespace

void setRole(QWidget *widget, Role role)
{
    setProperty(widget, "role", QLatin1String(RoleNames[static_cast<std::size_t>(role)]));
    // A plain widget paints the background of the style sheet only when told to.
    if (role == Role::Window || role == Role::TitleBar || role == Role::Panel)
        widget->setAttribute(Qt::WA_StyledBackground);
}

void setChosen(QWidget *pageButton, bool chosen)
{
    setProperty(pageButton, "chosen", chosen);
}

void setInvalid(QWidget *field, bool invalid)
{
    setProperty(field, "invalid", invalid);
}

QFont font(int pointSize, bool bold)
{
    QFont font;
    font.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("Noto Sans CJK SC")});
    font.setPointSize(pointSize);
    font.setBold(bold);
    return font;
}

QString arrowFontFamily()
{
    return g_arrowFontFamily;
}

void apply(QApplication &application)
{
    const int id = QFontDatabase::addApplicationFont(QStringLiteral(":/image/downArrowRegular.ttf"));
    if (id >= 0)
        g_arrowFontFamily = QFontDatabase::applicationFontFamilies(id).value(0);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(palette());
    QApplication::setFont(font(10));
    application.setStyleSheet(styleSheet());
}

} // namespace ChipLoom::Style
