#pragma once

#include "Gui/Clock/ClockPageModel.h"

namespace ChipLoom {

/// Shows everything at once, with the widest content that a control can have.
class WidestModel : public ClockPageModel
{
public:
    ClockFormOnly form = ClockFormOnly::Flexible;

    ClockFace face(const ClockSubject &subject) const override
    {
        ClockFace face;
        face.text = text(subject);
        face.options = QStringList{option(subject)};
        face.choice = 0;
        return face;
    }
    ClockPaths runningPaths() const override { return ClockPath::Always; }
    ClockFormOnly pllForm() const override { return form; }
    void choose(ClockField, int) override {}
    void type(ClockField, const QString &) override {}
    void enter(ClockField, const QString &) override {}
    QVector<ClockSolutionRow> solutions() const override { return {}; }
    void chooseSolution(int) override {}

private:
    static QString text(const ClockSubject &subject)
    {
        if (const auto *field = std::get_if<ClockField>(&subject)) {
            switch (*field) {
            case ClockField::LextBypass:
            case ClockField::HextBypass:
                return QStringLiteral("bypass");
            case ClockField::PllMs:
                return QStringLiteral("/15");
            case ClockField::PllNs:
                return QStringLiteral("*500");
            case ClockField::ClkoutPin:
            case ClockField::Clkout1Pin:
            case ClockField::Clkout2Pin:
                return QStringLiteral("PB13");
            default:
                break;
            }
        }
        if (const auto *extra = std::get_if<ClockExtra>(&subject)) {
            switch (*extra) {
            case ClockExtra::PllCfg:
                return QStringLiteral("CRM_PLLCFG: 0x40092041");
            case ClockExtra::PllNote:
                return QStringLiteral("No multiplier exists for the present PLL input.");
            case ClockExtra::SclkError:
                return QStringLiteral("107.520 MHz instead of 108.000\n-4444.4 ppm");
            case ClockExtra::Solutions:
                return QStringLiteral("Solutions...");
            case ClockExtra::SclkLimitNote:
                return QStringLiteral("Useage limited:\nTemperature range - 40~85 degree. \nVDD must over 3.0V. ");
            case ClockExtra::ClkoutSource:
            case ClockExtra::Clkout2Source:
            case ClockExtra::ClkoutResult:
            case ClockExtra::Clkout2Result:
                return QStringLiteral("(288.000 MHz)");
            case ClockExtra::SystemClock:
            case ClockExtra::PllClock:
            case ClockExtra::UsbClock:
            case ClockExtra::AdcClock:
                return QStringLiteral("288.000 MHz");
            case ClockExtra::Apb1TmrMul:
            case ClockExtra::Apb2TmrMul:
                return QStringLiteral("* 2");
            default:
                break;
            }
        }
        return QStringLiteral("1024.000");
    }

    static QString option(const ClockSubject &subject)
    {
        if (subject == ClockSubject(ClockField::PllMode))
            return QStringLiteral("flexible");
        if (subject == ClockSubject(ClockField::HickToSclk))
            return QStringLiteral("48MHz");
        return subject == ClockSubject(ClockField::AdcDiv) ? QStringLiteral("/16") : QStringLiteral("/512");
    }
};

} // namespace ChipLoom
