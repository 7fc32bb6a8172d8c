#pragma once

#include <QString>

namespace ChipLoom {

/// Why an XML file gave nothing.
enum class XmlFault {
    None,
    Missing,       ///< no such file
    Unreadable,    ///< a folder, a device, no permission: `detail` is what the system said
    TooLarge,      ///< more than `limit` bytes
    WrongEncoding, ///< neither UTF-8 nor UTF-16 with a byte order mark
    Declarations,  ///< holds a document type, which may declare entities
    TooDeep,       ///< elements nested more than `limit` deep
    TooComplex,    ///< more than `limit` elements and attributes, or an element with too many attributes
    Malformed,     ///< no well-formed XML: `detail` is what the parser said
    NothingListed  ///< well-formed, but without the lists that make a catalogue
};

struct XmlProblem
{
    XmlFault fault = XmlFault::None;
    QString file;     ///< where it was looked for
    qint64 line = 0;  ///< 1-based; 0 where no line is meant
    qint64 limit = 0; ///< the bound that was passed
    QString detail;   ///< untranslated words of the system or the parser

    explicit operator bool() const { return fault != XmlFault::None; }
};

/// The problem in a sentence of the present language, naming the file; empty for none.
QString XmlProblemText(const XmlProblem &problem);

} // namespace ChipLoom
