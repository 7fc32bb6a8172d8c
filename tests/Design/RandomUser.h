#pragma once

#include "ClockConfig/ClockSettings.h"
#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"

#include <functional>
#include <random>

namespace ChipLoom::Test {

/// Makes changes as a user might, in a random but repeatable order. What is refused changes nothing.
class RandomUser
{
public:
    /// `isWanted` chooses the modules that are changed; without it all are.
    RandomUser(Design &design, unsigned seed,
               const std::function<bool(const ModuleConfiguration &)> &isWanted = nullptr)
        : m_design(design), m_random(seed)
    {
        for (const auto &part : design.parts()) {
            auto *module = dynamic_cast<ModuleConfiguration *>(part.get());
            if (module && (!isWanted || isWanted(*module)))
                m_modules.push_back(module);
        }
        // The kernel and the delays sharing the system timer is what opening a file repairs.
        apply("mode", "SYSTEM/Time_Base", "Disable");
    }

    void change(int count)
    {
        // A design starts with delays on the system timer, and a kernel beside that is what opening a file repairs.
        apply("mode", QStringLiteral("SYSTEM/Time_Base"), QStringLiteral("Disable"));
        for (int i = 0; i < count; ++i) {
            switch (below(6)) {
            case 0:
            case 1:
            case 2:
                mode();
                break;
            case 3:
            case 4:
                parameter();
                break;
            default:
                below(4) ? pin() : clock();
                break;
            }
            m_design.scheduler().drain();
        }
    }

    int below(int count) { return int(m_random() % unsigned(count)); }
    const QString &oneOf(const QStringList &values) { return values.at(below(values.size())); }

    /// Chooses among what a random field of the clock page offers, valid with the others or not.
    void clock()
    {
        ZV32MCUPLL *page = m_design.clock().getMCUPLL();
        if (!page)
            return;
        const auto fields = allClockFields();
        const ClockField field = fields[below(int(fields.size()))];
        if (!hasClockField(page->series(), field) || isTypedClockField(field))
            return;
        const std::vector<ClockOption> options = clockOptions(page->clock(), field);
        if (!options.empty())
            apply("clock", clockFieldName(page->series(), field), options.at(below(int(options.size()))).text());
    }

private:
    void apply(const QString &section, const QString &address, const QString &value)
    {
        m_design.apply({section, address, value});
    }

    void mode()
    {
        const ModuleConfiguration &module = *m_modules.at(below(int(m_modules.size())));
        if (module.controls().empty())
            return;
        const ModeControl &control = *module.controls().at(below(int(module.controls().size())));
        const int index = below(control.count());
        const QString item = index == 0 ? QStringLiteral("Disable") : control.items().at(index - 1).Name;
        if (item == QLatin1String("SysTick"))
            return;
        apply("mode", module.instanceName() + '/' + control.modeName(),
              control.isCheckBox() ? QString(index ? "TRUE" : "FALSE") : item);
        // Without the crystal's frequency no clock runs, and what was calculated from clocks before cannot be again.
        if (control.modeName() == QLatin1String("HEXT"))
            apply("clock", "hext", "8");
    }

    void parameter()
    {
        const ModuleConfiguration &module = *m_modules.at(below(int(m_modules.size())));
        const QList<RefParameter> &list = module.parameters().GetRefParameterList();
        if (list.isEmpty())
            return;
        const RefParameter parameter = list.at(below(list.size()));
        QStringList values{parameter.MinValue, parameter.MaxValue, QString::number(below(100))};
        for (const PossibleValue &value : parameter.PossibleValueList)
            values.append(value.Value);
        apply("param", module.instanceName() + '/' + parameter.Name, values.at(below(values.size())));
    }

    void pin()
    {
        const QList<MCUPinsBaseInfo> &pins = m_design.pinInfo().m_deviceBaseInfoList;
        const MCUPinsBaseInfo &pin = pins.at(below(pins.size()));
        if (!pin.pinSignalsList.isEmpty())
            apply("pin", pin.pinName, pin.pinSignalsList.at(below(pin.pinSignalsList.size())).signalName);
    }

    Design &m_design;
    std::mt19937 m_random;
    std::vector<ModuleConfiguration *> m_modules;
};

} // namespace ChipLoom::Test
