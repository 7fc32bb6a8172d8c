#include "Design/OpeningProblems.h"

#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "Model/XmlTree.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace ChipLoom {

namespace {

QString instanceOf(const DesignProblem &problem)
{
    return problem.place.section(QLatin1Char('/'), 0, 0);
}

bool concernsMode(const DesignProblem &problem, const Design &design)
{
    const DesignReason reason = problem.reason.reason;
    if (reason == DesignReason::NoSuchModule || reason == DesignReason::UnknownMode)
        return true;
    const ModuleConfiguration *module = design.module(instanceOf(problem));
    return module && module->control(problem.place.section(QLatin1Char('/'), 1));
}

QSet<QString> labelledPins(const XMLElementInfo &root)
{
    QSet<QString> pins;
    if (const XMLElementInfo *section = findChild(root, QLatin1String("GPIO"))) {
        for (const XMLElementInfo &row : section->subElementInfoList) {
            if (findChild(row, QLatin1String("Label")))
                pins.insert(attributeValue(row, QLatin1String("PinName")));
        }
    }
    return pins;
}

bool standsNowhere(const DevicePinInfo &pins, const QString &signal)
{
    const QVector<SignalPlace> &places = pins.placesOf(signal);
    return std::all_of(places.begin(), places.end(),
                       [&](SignalPlace place) { return pins.signal(place).configStatus == Not_Config; });
}

/// The signals of what the device has not are known by the beginning of their names alone.
bool belongsToOneOf(const QSet<QString> &instances, const QString &signal, const Design &design)
{
    const QStringList owners = design.ownersOf(signal);
    return std::any_of(instances.begin(), instances.end(), [&](const QString &name) {
        const QString beginning = name.section(QLatin1Char('_'), 0, 0) + QLatin1Char('_');
        return owners.contains(name) || signal.startsWith(beginning);
    });
}

bool raisedByOneOf(const QSet<QString> &instances, const QString &vectorName, const Design &design)
{
    const MCUNVICSetting *vector = design.nvic() ? design.nvic()->vector(vectorName) : nullptr;
    return vector && std::any_of(vector->relatedIPNameList.begin(), vector->relatedIPNameList.end(),
                                 [&](const QString &name) { return instances.contains(name); });
}

} // namespace

QList<DesignProblem> causesAmong(const QList<DesignProblem> &problems, const Design &design, const XMLElementInfo &root)
{
    QSet<QString> refused;   // instances of which a mode was
    QSet<QString> explained; // those of which the reason lies in no other mode
    QSet<QString> places;
    for (const DesignProblem &problem : problems) {
        if (concernsMode(problem, design)) {
            refused.insert(instanceOf(problem));
            if (problem.reason.reason != DesignReason::ModeClosed)
                explained.insert(instanceOf(problem));
        }
        places.insert(problem.place);
    }
    const QSet<QString> labelled = labelledPins(root);
    const auto follows = [&](const DesignProblem &problem) {
        switch (problem.reason.reason) {
        case DesignReason::UnknownParameter:
            return refused.contains(instanceOf(problem));
        case DesignReason::ModeClosed:
            return explained.contains(instanceOf(problem));
        case DesignReason::VectorClosed:
            return raisedByOneOf(refused, problem.reason.arguments.value(0), design);
        case DesignReason::NoSettingsOnPin:
            return places.contains(problem.place.section(QLatin1Char('/'), 0, 0)); // the pin itself is told
        case DesignReason::NotPlaced: {
            const QStringList signalNames = problem.reason.arguments.value(0).split(QLatin1Char(';'));
            return !labelled.contains(problem.place) &&
                   std::all_of(signalNames.begin(), signalNames.end(), [&](const QString &signal) {
                       return standsNowhere(design.pinInfo(), signal) && belongsToOneOf(refused, signal, design);
                   });
        }
        default:
            return false;
        }
    };
    QList<DesignProblem> causes;
    for (const DesignProblem &problem : problems) {
        const bool again = std::any_of(causes.begin(), causes.end(), [&](const DesignProblem &other) {
            return other.place == problem.place && other.reason == problem.reason;
        });
        if (!again && !follows(problem))
            causes.append(problem);
    }
    return causes;
}

QStringList repeatedEntries(const XMLElementInfo &section, bool isFlat)
{
    static const QStringList Lists{QStringLiteral("Mode"), QStringLiteral("Parameters"), QStringLiteral("Interrupts")};
    QStringList repeated;
    const auto look = [&](const XMLElementInfo &list) {
        QHash<QString, QString> values;
        for (const XMLElementInfo &entry : list.subElementInfoList) {
            const QString name = isFlat ? entry.tagName : attributeValue(entry, QLatin1String("name"));
            const QString value = isFlat ? entry.tagText : attributeValue(entry, QLatin1String("value"));
            if (values.contains(name) && values.value(name) != value)
                repeated.append(section.tagName + QLatin1Char('/') + name);
            else
                values.insert(name, value);
        }
    };
    if (isFlat)
        look(section);
    for (const XMLElementInfo &list : section.subElementInfoList) {
        if (!isFlat && Lists.contains(list.tagName))
            look(list);
    }
    repeated.removeDuplicates();
    return repeated;
}

} // namespace ChipLoom
