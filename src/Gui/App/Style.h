#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

class QApplication;

/// The look of all windows in one place: colours, fonts and the style sheet of the application. Widgets say what they
/// are with `setRole`; nothing else sets a style sheet of its own.
namespace ChipLoom::Style {

inline constexpr QColor WindowBackground{238, 245, 247};
inline constexpr QColor Accent{35, 184, 198};   ///< page headers, the chosen page
inline constexpr QColor Action{73, 172, 226};   ///< buttons that do the page's main thing
inline constexpr QColor PageIdle{85, 126, 191}; ///< buttons of pages that are not shown
inline constexpr QColor Highlight{0, 120, 215};
inline constexpr QColor Line{198, 212, 218}; ///< borders and separators
inline constexpr QColor Muted{84, 99, 108};  ///< hints and secondary text
inline constexpr QColor Positive{0, 128, 0};
inline constexpr QColor Caution{176, 96, 0};
inline constexpr QColor Negative{200, 0, 0};

/// What a widget is. A role sets colours and focus frame; size and text stay the widget's own.
enum class Role {
    None,
    Window,     ///< the ground of a window
    TitleBar,   ///< the strip with the program's or the device's name
    Action,     ///< push button: the main thing to do
    PageHeader, ///< push button: header of a page that folds
    Page,       ///< push button: shows a page; see `setChosen`
    Link,       ///< push button that reads as a link
    Entry,      ///< label of a list that takes the focus
    Panel,      ///< white framed pane
    PanelTitle, ///< label over a pane
    Hint,       ///< label with secondary text
    Good,       ///< label: in order
    Warning,    ///< label: look here
    Error,      ///< label: wrong
    ToolStrip,  ///< group box: the strip of tools over a drawing
    Canvas      ///< graphics view: a white drawing with scroll bars of its own
};

/// Sets the dynamic property that the style sheet reads, and repaints if it changed.
void setRole(QWidget *widget, Role role);

/// Marks a `Role::Page` button as the one whose page is shown.
void setChosen(QWidget *pageButton, bool chosen);

/// Marks an entry field whose content is not accepted.
void setInvalid(QWidget *field, bool invalid);

/// Arial, or what stands in for it here, with a face for Chinese.
QFont font(int pointSize, bool bold = false);

/// Family of the font with the drop-down arrow; empty if its resource did not load.
QString arrowFontFamily();

/// Style, palette, fonts and style sheet. Once, before the first window.
void apply(QApplication &application);

} // namespace ChipLoom::Style
