#pragma once

#include "Gui/Clock/ClockMapDescription.h"

#include <QStringList>

#include <functional>

namespace ChipLoom {

/// How a control looks and what it says, in the user's language.
struct ClockFace
{
    enum class Tone { Plain, Good, OutOfRange };
    enum class Ground { Plain, Accepted, Pending };

    bool shown = true;
    bool enabled = true;
    QString text = {};        ///< of an edit, a value box or a label
    QStringList options = {}; ///< of a combo box; a radio button stands for one of them
    int choice = -1;
    QStringList refusals = {}; ///< for each option, why it cannot be chosen now; empty if it can
    Tone tone = Tone::Plain;
    Ground ground = Ground::Plain;
    QString toolTip = {};

    bool operator==(const ClockFace &) const = default;
};

/// One way to reach a wanted SCLK, in words.
struct ClockSolutionRow
{
    QString pll;
    QString sclk;
    QString error;
    QString buses;
    QString usb;
};

/// What the canvas shows and edits. All values are decided behind this: the canvas reads faces and hands over what
/// the user did.
class ClockPageModel
{
public:
    virtual ~ClockPageModel() = default;

    virtual ClockFace face(const ClockSubject &subject) const = 0;
    virtual ClockPaths runningPaths() const = 0;
    virtual ClockFormOnly pllForm() const = 0;

    virtual void choose(ClockField field, int option) = 0;
    /// What stands in an edit while the user types.
    virtual void type(ClockField field, const QString &text) = 0;
    /// Return in an edit.
    virtual void enter(ClockField field, const QString &text) = 0;

    virtual QVector<ClockSolutionRow> solutions() const = 0;
    virtual void chooseSolution(int row) = 0;

    /// Called after every change of what the page shows.
    std::function<void()> changed;
};

} // namespace ChipLoom
