// The section of the interrupts in the design file.
#include "Design/NVIC_Configuration.h"
#include "Design/VectorRules.h"
#include "Model/XmlTree.h"

#include <QSet>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

const QString GroupName = QStringLiteral("PriorityGroup");
const QString ShowType = QStringLiteral("ShowType");
const QString On = QStringLiteral("TRUE");
const QString Off = QStringLiteral("FALSE");

} // namespace

void NVIC_Configuration::writeSection(QXmlStreamWriter &writer) const
{
    writer.writeStartElement(QStringLiteral("NVIC"));
    writer.writeTextElement(GroupName, m_PriorityGroupParameter.CurrentValue);
    writer.writeTextElement(ShowType, QString::number(m_ShowMode));
    for (const MCUNVICSetting &record : m_records) {
        if (!record.core_IRQFlag && !record.canBeSet)
            continue;
        const std::array<int, 6> numbers{
            record.enabledFlag,
            record.preemptionPriority_Value,
            record.subPriority_Value,
            record.FREERTOS_Func_enabledFlag,
            record.FREERTOS_Func_enabledFlag_ManualCancel,
            record.IRQHandler_Generate_enabledFlag,
        };
        QStringList texts;
        for (const int number : numbers)
            texts.append(QString::number(number));
        writer.writeTextElement(record.HandlerName, texts.join(QLatin1Char(';')));
    }
    writer.writeEndElement();
}

void NVIC_Configuration::readSection(const XMLElementInfo &root, QList<DesignProblem> &problems)
{
    const XMLElementInfo *section = ChipLoom::findChild(root, QLatin1String("NVIC"));
    if (!section)
        return;
    for (const QString &name : {GroupName, ShowType}) {
        const XMLElementInfo *element = ChipLoom::findChild(*section, QLatin1String(name.toLatin1()));
        if (!element)
            continue;
        const DesignAnswer answer = apply({QStringLiteral("nvic"), name, element->tagText});
        if (!answer)
            problems.append({QLatin1String("NVIC/") + name, answer});
    }
    QSet<QString> read;
    for (const XMLElementInfo &element : section->subElementInfoList) {
        if (element.tagName != GroupName && element.tagName != ShowType && !read.contains(element.tagName))
            readVector(element.tagName, element.tagText, problems);
        read.insert(element.tagName);
    }
}

void NVIC_Configuration::readVector(const QString &handler, const QString &text, QList<DesignProblem> &problems)
{
    const auto found = std::find_if(m_records.begin(), m_records.end(),
                                    [&](const MCUNVICSetting &record) { return record.HandlerName == handler; });
    const QStringList numbers = text.split(QLatin1Char(';'));
    if (found == m_records.end() || numbers.size() != 6) {
        problems.append({QLatin1String("NVIC/") + handler,
                         found == m_records.end() ? DesignAnswer{DesignReason::UnknownVector, {handler}}
                                                  : DesignAnswer{DesignReason::ValueNotInList, {handler, text}}});
        return;
    }
    const QString name = found->ValueName;
    const auto flag = [&](int index) { return numbers.at(index).toInt() != 0 ? On : Off; };
    const auto take = [&](Field field, const QString &value) {
        const DesignAnswer answer = setField(name, field, value);
        if (!answer)
            problems.append({QLatin1String("NVIC/") + name, answer});
    };
    take(Field::Enabled, flag(0));
    take(Field::GenerateHandler, flag(5));
    // The RTOS function first: it sets the limit of the priority.
    if (m_FREERTOS_EnableFlag)
        take(Field::RTOSFunction, flag(3));
    else if (found->canBeSet && rtosRule(found->NVICName) == RtosRule::Peripheral)
        m_sources[indexOf(name)].rtosManualCancel = numbers.at(4).toInt() != 0;
    take(Field::PreemptionPriority, numbers.at(1));
    take(Field::SubPriority, numbers.at(2));
}

} // namespace ChipLoom
