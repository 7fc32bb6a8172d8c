#pragma once

#include "ClockConfig/ClockFields.h"
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QVector>

#include <variant>

namespace ChipLoom {

/// What the canvas shows beside the fields and the branches of the tree.
enum class ClockExtra {
    Lick,
    Lext,
    Hick,
    ToWdt,
    ToRtc,
    PllCfg,    ///< the register of the PLL
    PllNote,   ///< that no multiplier exists
    SclkError, ///< how far the achieved SCLK lies from the wanted one
    Solutions, ///< opens the list of solutions
    SclkLimitNote,
    Apb1TmrMul,
    Apb2TmrMul,
    SystemClock,
    PllClock,
    UsbClock,
    AdcClock,
    ClkoutSource, ///< what the chosen source gives to a clock output; the first of two stands for the only one
    Clkout2Source,
    ClkoutResult,
    Clkout2Result,
    // Hints where something must be enabled first.
    HextInfo,
    LextInfo,
    UsbInfo,
    AdcInfo,
    Usart1Info,
    Usart2Info,
    Usart3Info,
    I2c1Info,
    Can1Info,
    Can2Info,
    Can3Info,
    I2sf5Info,
    ClkoutInfo,
    Clkout2Info,
};

/// What a place on the canvas shows or edits: a field, the frequency of a branch, or something beside them.
using ClockSubject = std::variant<ClockField, ClockBranch, ClockExtra>;

/// The stretches of the tree that run or rest as one. A wire belongs to one or more of them and is emphasised while
/// any of them runs.
enum class ClockPath : quint32 {
    Always = 1u << 0,
    LickToRtc = 1u << 1,
    LextToRtc = 1u << 2,
    HextToRtc = 1u << 3,
    HextToPll = 1u << 4,
    HickToPll = 1u << 5,
    Pll = 1u << 6,
    HextToSclk = 1u << 7,
    PllToSclk = 1u << 8,
    HickToSclk = 1u << 9,
    PllToUsb = 1u << 10,
    HickToUsb = 1u << 11,
    Adc = 1u << 12,
    Usart1 = 1u << 13,
    Usart2 = 1u << 14,
    Usart3 = 1u << 15,
    I2c1 = 1u << 16,
    Can1 = 1u << 17,
    Can2 = 1u << 18,
    Can3 = 1u << 19,
    I2sf5 = 1u << 20,
    Clkout1 = 1u << 21,
    Clkout2 = 1u << 22,
};
Q_DECLARE_FLAGS(ClockPaths, ClockPath)
Q_DECLARE_OPERATORS_FOR_FLAGS(ClockPaths)

/// On series whose PLL has two forms, the form that an item of the drawing belongs to.
enum class ClockFormOnly { Both, Normal, Flexible };

struct ClockMapText
{
    enum class Kind { Name, Caption, Hint, Title };
    Kind kind;
    QString key; ///< English text, translated in the context "Clock"
    QRectF rect;
    Qt::Alignment alignment;
    ClockFormOnly form;
};

struct ClockMapWire
{
    QVector<QPointF> points; ///< horizontal and vertical stretches only
    ClockPaths paths;
    bool arrow;
    ClockFormOnly form;
};

/// A junction of wires.
struct ClockMapPoint
{
    QPointF at;
    ClockPaths paths;
};

/// A multiplexer: a trapezoid whose wide side, with its top left corner `at`, takes the inputs.
struct ClockMapMux
{
    QPointF at;
    qreal height;
};

/// A fixed factor such as "/12", or an empty box around a group.
struct ClockMapBlock
{
    QRectF rect;
    QString text;
};

/// The driver of an output pin.
struct ClockMapBuffer
{
    QPointF tip;
    ClockPaths paths;
};

/// Where a control stands.
struct ClockMapPlace
{
    enum class Kind { Radio, Combo, Edit, Value, Label, Info, Button };
    ClockSubject subject;
    Kind kind;
    QRectF rect;
    int option; ///< of the field, that a radio button stands for

    ClockFormOnly form;
};

/// The button that lists the peripherals of a branch.
struct ClockMapList
{
    QString title; ///< key, as the label of the row
    QStringList instances;
    QRectF rect;
};

/// One drawing of a clock tree, in scene units inside the frame (0, 0, `Width`, `Height`).
struct ClockMapDescription
{
    static constexpr qreal Width = 1412;
    static constexpr qreal Height = 833;

    QVector<ClockMapText> texts;
    QVector<ClockMapWire> wires;
    QVector<ClockMapPoint> points;
    QVector<ClockMapMux> muxes;
    QVector<ClockMapBlock> blocks;
    QVector<ClockMapBuffer> buffers;
    QVector<ClockMapPlace> places;
    QVector<ClockMapList> lists;
};

} // namespace ChipLoom
