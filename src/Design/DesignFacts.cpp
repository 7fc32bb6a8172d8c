#include "Design/DesignFacts.h"

#include "Design/Design.h"
#include "Model/XmlTree.h"

#include <QHash>
#include <QSet>

namespace ChipLoom {

namespace {

using Kind = DesignFact::Kind;

/// How an element is called among its like: by the attribute that names it, or else by its tag.
QString labelOf(const XMLElementInfo &element)
{
    for (const char *attribute : {"name", "SignalName", "Request"}) {
        const QString value = attributeValue(element, QLatin1String(attribute));
        if (!value.isEmpty())
            return value;
    }
    return element.tagName;
}

/// Every value below an element, each under the names that lead to it.
void collect(Kind kind, const QString &place, const XMLElementInfo &element, QList<DesignFact> &facts)
{
    const QString value = attributeValue(element, QLatin1String("value"));
    const QString channel = attributeValue(element, QLatin1String("Channel"));
    // A mode that is off says nothing, whether the file writes it or not.
    const bool off = kind == Kind::Mode && (value == QLatin1String("Disable") || value == QLatin1String("FALSE"));
    if (off)
        return;
    if (!channel.isEmpty())
        facts.append({kind, place, channel});
    else if (!value.isEmpty() || !attributeValue(element, QLatin1String("name")).isEmpty())
        facts.append({kind, place, value});
    else if (element.subElementInfoList.isEmpty() && !element.tagText.trimmed().isEmpty())
        facts.append({kind, place, element.tagText});
    for (const XMLElementInfo &child : element.subElementInfoList) {
        // Labels stand on pins and are told there.
        if (child.tagName != QLatin1String("Label"))
            collect(kind, place + QLatin1Char('/') + labelOf(child), child, facts);
    }
}

void collectChildren(Kind kind, const QString &place, const XMLElementInfo &element, QList<DesignFact> &facts)
{
    for (const XMLElementInfo &child : element.subElementInfoList) {
        const bool onlyShown = child.tagName == QLatin1String("ShowType");
        if (!onlyShown)
            collect(kind, place + labelOf(child), child, facts);
    }
}

void collectPins(const DevicePinInfo &info, QList<DesignFact> &facts)
{
    for (const MCUPinsBaseInfo &pin : info.m_deviceBaseInfoList) {
        QStringList placed;
        QString label;
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus == Not_Config)
                continue;
            placed.append(state.signalName);
            if (label.isEmpty())
                label = state.signalUserLabel;
        }
        if (!placed.isEmpty())
            facts.append({Kind::Pin, pin.pinName, placed.join(QLatin1String(", "))});
        if (!label.isEmpty())
            facts.append({Kind::Label, pin.pinName, label});
    }
}

void collectModule(const XMLElementInfo &section, QList<DesignFact> &facts)
{
    const QString place = section.tagName + QLatin1Char('/');
    for (const XMLElementInfo &group : section.subElementInfoList) {
        if (group.tagName == QLatin1String("Mode"))
            collectChildren(Kind::Mode, place, group, facts);
        else if (group.tagName == QLatin1String("Interrupts"))
            collectChildren(Kind::Interrupt, place, group, facts);
        else
            collectChildren(Kind::Parameter, place, group, facts);
    }
}

void collectCalls(const XMLElementInfo &section, QList<DesignFact> &facts)
{
    for (const XMLElementInfo &row : section.subElementInfoList) {
        QString value = attributeValue(row, QLatin1String("RankNum"));
        if (attributeValue(row, QLatin1String("MainDoNotCallFlag")) == QLatin1String("TRUE"))
            value += QLatin1String(" -");
        facts.append({Kind::CallOrder, attributeValue(row, QLatin1String("FuncName")), value});
    }
}

} // namespace

QList<DesignFact> designFacts(const Design &design)
{
    QList<DesignFact> facts;
    const XMLElementInfo root = parseXml(design.file().content(), XmlText::All).root;
    for (const XMLElementInfo &section : root.subElementInfoList) {
        const QString &name = section.tagName;
        if (name == QLatin1String("MCUInfo"))
            collectChildren(Kind::Device, {}, section, facts);
        else if (name == QLatin1String("ClockConfiguration"))
            collectChildren(Kind::Clock, {}, section, facts);
        else if (name == QLatin1String("PINInfo"))
            collectPins(design.pinInfo(), facts);
        else if (name == QLatin1String("ProjectInfomation"))
            collectChildren(Kind::Project, {}, section, facts);
        else if (name == QLatin1String("FunctionRankInfo"))
            collectCalls(section, facts);
        else if (name == QLatin1String("GPIO"))
            collectChildren(Kind::PinSetting, {}, section, facts);
        else if (name == QLatin1String("NVIC"))
            collectChildren(Kind::Interrupt, {}, section, facts);
        else if (name.contains(QLatin1String("DMA")))
            collectChildren(Kind::Dma, name + QLatin1Char('/'), section, facts);
        else if (name != QLatin1String("ChipLoomVersion"))
            collectModule(section, facts);
    }
    return facts;
}

QList<DesignDifference> compareDesigns(const Design &first, const Design &second)
{
    const auto keyOf = [](const DesignFact &fact) { return QString::number(int(fact.kind)) + fact.place; };
    const auto sorted = [&keyOf](const QList<DesignFact> &facts) {
        QHash<QString, QString> values;
        for (const DesignFact &fact : facts)
            values.insert(keyOf(fact), fact.value);
        return values;
    };
    const QList<DesignFact> firstFacts = designFacts(first);
    const QList<DesignFact> secondFacts = designFacts(second);
    const QHash<QString, QString> inFirst = sorted(firstFacts);
    const QHash<QString, QString> inSecond = sorted(secondFacts);
    QList<DesignDifference> differences;
    QSet<QString> seen;
    for (const QList<DesignFact> *facts : {&firstFacts, &secondFacts}) {
        for (const DesignFact &fact : *facts) {
            const QString key = keyOf(fact);
            if (inFirst.value(key) != inSecond.value(key) && !seen.contains(key))
                differences.append({fact.kind, fact.place, inFirst.value(key), inSecond.value(key)});
            seen.insert(key);
        }
    }
    return differences;
}

} // namespace ChipLoom
