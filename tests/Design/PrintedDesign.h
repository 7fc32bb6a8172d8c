#pragma once

#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"

#include <QStringList>

namespace ChipLoom::Test {

class SilentPrompt : public UserPrompt
{
public:
    int ask(const PromptRequest &request) override
    {
        m_asked.append(request.text);
        return m_answer;
    }

    QStringList m_asked;
    int m_answer = 0;
};

inline AppPaths samplePaths()
{
    return AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
}

// Everything that a user could tell apart: placed signals, choices and their states, parameters, tokens.
inline QStringList printed(const Design &design)
{
    QStringList lines;
    for (const MCUPinsBaseInfo &pin : design.pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &signal : pin.pinSignalsList) {
            if (signal.configStatus != Not_Config)
                lines.append(pin.pinName + ' ' + signal.signalName + ' ' + QString::number(signal.configStatus));
        }
    }
    for (const auto &part : design.parts()) {
        const auto *module = dynamic_cast<const ModuleConfiguration *>(part.get());
        if (!module)
            continue;
        const QString name = module->instanceName();
        lines.append(name + QString::number(module->GetIPStatusFlag()));
        for (const auto &control : module->controls()) {
            QString states;
            for (const ItemInfoStruct &item : control->items())
                states += QString::number(int(item.state()));
            QStringList tokens = control->receivedTokens();
            tokens.sort();
            lines.append(QStringList{name, control->modeName(), QString::number(control->index()),
                                     QString::number(control->isEnabled()), states, tokens.join(',')}
                             .join(' '));
        }
        for (const RefParameter &parameter : module->parameters().GetRefParameterList())
            lines.append(name + ' ' + parameter.Name + ' ' + parameter.CurrentValue);
        QStringList tokens = module->parameters().GetValidSemaphoreList();
        tokens.sort();
        lines.append(name + " tokens " + tokens.join(','));
    }
    return lines;
}

inline QStringList difference(const QStringList &before, const QStringList &after)
{
    QStringList lines;
    for (const QString &line : after) {
        if (!before.contains(line))
            lines.append("+ " + line);
    }
    for (const QString &line : before) {
        if (!after.contains(line))
            lines.append("- " + line);
    }
    return lines;
}

} // namespace ChipLoom::Test
