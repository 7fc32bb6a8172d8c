#pragma once

#include "Model/ShareParameter.h"
#include "Model/XmlTree.h"

#include <QString>

// What the files of the reader share: the ways in which an element becomes fields of a record.
namespace ChipLoom::XmlRecords {

/// The text of the present language, as it stands.
inline QString inLanguage(const QString &english, const QString &chinese)
{
    return GlobalLanguage::g_CurrentLanguage == UI_CH ? chinese : english;
}

/// A flag compared in any case with "true"; `fallback` where the attribute is absent.
inline bool readFlag(const XMLElementInfo &element, const char *attribute, bool fallback)
{
    const QString *value = findAttribute(element, QLatin1String(attribute));
    return value ? value->compare(QLatin1String("true"), Qt::CaseInsensitive) == 0 : fallback;
}

/// `$IpInstance` stands for the peripheral, as "USART1".
inline QString withInstance(QString text, const QString &instance)
{
    return text.replace(QLatin1String("$IpInstance"), instance);
}

/// The first child of the root with this `term`, or null. In catalogue, device and rank files the names of elements
/// mean nothing.
const XMLElementInfo *findTerm(const XMLElementInfo &root, const QString &term);

/// A `RefParameter` element as a record, without its `Mode`.
RefParameter readRefParameter(const XMLElementInfo &element, const QString &instance);
/// As `readRefParameter`; a parameter named "Instance" then holds the name of the peripheral.
RefParameter readListedParameter(const XMLElementInfo &element, const QString &instance);

RefMode readRefMode(const XMLElementInfo &element);

} // namespace ChipLoom::XmlRecords
