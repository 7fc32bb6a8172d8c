#include "GenerateCode/FunctionRank.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>

namespace ChipLoom {

namespace {

QList<MainFuncNameForRank> parsedFunctionRank(const QString &folder)
{
    QFile file(QLatin1String(":/srcode/") + folder + QLatin1String("/FunctionCallRank.xml"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<MainFuncNameForRank> table;
    QXmlStreamReader xml(&file);
    bool inList = false;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("entry")) {
            inList = attributes.value(QLatin1String("term")) == QLatin1String("MainFuncNameList");
        } else if (inList && xml.name() == QLatin1String("Member")) {
            MainFuncNameForRank entry;
            entry.RankNum = table.size() + 1;
            entry.FuncName = attributes.value(QLatin1String("FuncName")).toString();
            entry.InstanceName = attributes.value(QLatin1String("InstanceName")).toString();
            entry.FixPosFlag = attributes.value(QLatin1String("FixPos")) == QLatin1String("TRUE");
            entry.CodeSection = attributes.value(QLatin1String("CodeSection")).toString();
            table.append(entry);
        }
    }
    return table;
}

} // namespace

QList<MainFuncNameForRank> readFunctionRank(const QString &folder)
{
    static QMutex mutex;
    static QHash<QString, QList<MainFuncNameForRank>> tables;
    const QMutexLocker lock(&mutex);
    auto entry = tables.constFind(folder);
    if (entry == tables.constEnd())
        entry = tables.insert(folder, parsedFunctionRank(folder));
    return *entry;
}

QList<MainFuncNameForRank> Set_Valid_PeripheralsAndMid_NameList_ForRank(const QList<MainFuncNameForRank> &table,
                                                                        QList<MainFuncNameForRank> validList,
                                                                        const QStringList &names)
{
    const QSet<QString> inUse(names.begin(), names.end());
    QHash<QString, const MainFuncNameForRank *> wanted;
    for (const MainFuncNameForRank &entry : table) {
        const bool isWanted = inUse.contains(entry.FuncName) || inUse.contains(entry.InstanceName);
        if (isWanted && !wanted.contains(entry.FuncName))
            wanted.insert(entry.FuncName, &entry);
    }
    QSet<QString> placed;
    const auto isUnwanted = [&](const MainFuncNameForRank &entry) { return !wanted.contains(entry.FuncName); };
    validList.erase(std::remove_if(validList.begin(), validList.end(), isUnwanted), validList.end());
    // What the user decides is the order and whether a call is made; the rest is the table's, whatever a file says.
    for (MainFuncNameForRank &entry : validList) {
        const bool doNotCall = entry.MainDoNotCallFlag;
        entry = *wanted.value(entry.FuncName);
        entry.MainDoNotCallFlag = doNotCall;
        placed.insert(entry.FuncName);
    }
    for (const MainFuncNameForRank &entry : table) {
        if (wanted.value(entry.FuncName) != &entry || placed.contains(entry.FuncName))
            continue;
        auto place = validList.end();
        if (entry.FixPosFlag) {
            place = std::find_if(validList.begin(), validList.end(),
                                 [&](const MainFuncNameForRank &other) { return other.RankNum > entry.RankNum; });
        }
        validList.insert(place, entry);
    }
    return validList;
}

QList<MainFuncNameForRank> resetFunctionRank(QList<MainFuncNameForRank> validList)
{
    for (MainFuncNameForRank &entry : validList)
        entry.MainDoNotCallFlag = false;
    std::stable_sort(validList.begin(), validList.end(),
                     [](const MainFuncNameForRank &a, const MainFuncNameForRank &b) { return a.RankNum < b.RankNum; });
    return validList;
}

} // namespace ChipLoom
