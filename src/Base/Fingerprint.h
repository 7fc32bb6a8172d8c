#pragma once

#include <QString>
#include <QStringList>

#include <string_view>

namespace ChipLoom {

/// A number that tells whether texts and numbers, in their order, are those of another time on the same machine. It
/// guards against chance, not against malice; another build of the program may give another number.
class Fingerprint
{
public:
    void add(QStringView text) { mix(std::hash<std::u16string_view>()({text.utf16(), size_t(text.size())})); }
    void add(const QString &text) { add(QStringView(text)); }
    void add(const QByteArray &bytes) { mix(std::hash<std::string_view>()({bytes.constData(), size_t(bytes.size())})); }
    void add(const QStringList &texts)
    {
        add(qint64(texts.size()));
        for (const QString &text : texts)
            add(text);
    }
    void add(qint64 number) { mix(quint64(number)); }
    template <typename... Things> void addAll(const Things &...things) { (add(things), ...); }

    quint64 value() const { return m_value; }

private:
    void mix(quint64 value)
    {
        // Odd, without a pattern: the golden ratio in 64 bits.
        m_value = (m_value ^ value) * 0x9e3779b97f4a7c15U;
        m_value ^= m_value >> 32U;
    }

    quint64 m_value = 0;
};

} // namespace ChipLoom
