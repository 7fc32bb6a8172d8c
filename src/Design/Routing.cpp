#include "Design/Routing.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace ChipLoom {

namespace {

// Names are separated by blanks; "X*" stands for every name that begins with X, "*" for all.
struct RouteRow
{
    const char *sender;
    const char *receiver;
    const char *series;
    bool refresh;
};

constexpr std::array<RouteRow, 30> Routes{{
    // Middleware to peripherals.
    {"FREERTOS RT-Thread_Nano", "SYSTEM EMAC", "*", true},
    {"LWIP", "EMAC", "*", true},
    {"I2C_Application", "I2C*", "*", true},
    // Among peripherals.
    {"TMR* USART* UART*", "SYSTEM", "*", true},
    {"SYSTEM", "TMR* USART* UART* EMAC*", "*", true},
    {"TMR10 TMR11", "IRTMR", "*", true},
    {"TMR16 TMR17", "IRTMR", "ZV32F421 ZV32F425 ZV32L021 ZV32F011 ZV32F422 ZV32F426 ZV32F6221", true},
    {"USART* UART*", "IRTMR", "*", true},
    {"I2S1", "SPI1", "*", true},
    {"I2S2", "SPI2", "*", true},
    {"I2S3", "SPI3", "*", true},
    {"I2S4", "SPI4", "*", true},
    {"SPI1", "I2S1", "*", true},
    {"SPI2", "I2S2", "*", true},
    {"SPI3", "I2S3", "*", true},
    {"SPI4", "I2S4", "*", true},
    {"SCFG", "I2S2 I2S3", "*", true},
    {"EXINT", "ADC1 DAC", "*", true},
    {"ERTC", "EXINT", "*", true},
    {"USB_OTGFS1 USBFS", "ACC", "*", false},
    {"CMP1", "TMR*", "ZV32F421 ZV32F422 ZV32F426", true},
    {"ADC2", "ADC1", "ZV32F403A ZV32F407 ZV32A403A ZV32F413 ZV32F403E ZV32F407E", true},
    // Peripherals and middlewares to middlewares.
    {"USB_OTGFS1 USB_OTGFS2 USB_OTGHS1 USBFS", "USB_DEVICE USB_HOST", "*", true},
    {"SYSTEM", "LWIP USB_DEVICE USB_HOST", "*", true},
    {"SYSTEM USB_DEVICE USB_HOST LWIP FATFS", "FREERTOS RT-Thread_Nano", "*", true},
    {"FREERTOS RT-Thread_Nano", "USB_DEVICE USB_HOST LWIP", "*", true},
    {"EMAC", "LWIP", "*", true},
    {"SDIO* SPI* USB_HOST", "FATFS", "*", true},
    {"I2C1 I2C2 I2C3 I2C4", "I2C_Application", "*", true},
    {"CAN1 CAN2", "USB_DEVICE USBFS", "ZV32F403A ZV32F407 ZV32A403A ZV32F413 ZV32F403E ZV32F407E", true},
}};

constexpr std::array<RouteRow, 7> ParameterRoutes{{
    {"I2C*", "I2C_Application", "*", true},
    {"EMAC", "LWIP", "*", true},
    {"ADC1", "ADC2 ADC3", "ZV32F403A ZV32F407 ZV32A403A ZV32F413 ZV32F403E ZV32F407E", true},
    {"ADC1", "ADC2 ADC3 ADC-Common", "ZV32F435 ZV32F437 ZV32M412 ZV32M416 ZV32F455 ZV32F456 ZV32F457 ZV32F406 ZV32F408",
     true},
    {"ADC-Common", "ADC1 ADC2 ADC3", "ZV32F435 ZV32F437 ZV32M412 ZV32M416 ZV32F455 ZV32F456 ZV32F457 ZV32F406 ZV32F408",
     true},
    {"LWIP", "EMAC", "*", true},
    {"XMC_SDRAM_1", "XMC_SDRAM_2", "*", true},
}};

constexpr const char *NoScfgDma = "ZV32F422 ZV32F426 ZV32F6221";

// Asked for every part with every token that moves, and for every mode that is barred.
class Names
{
public:
    explicit Names(const char *patterns)
    {
        for (const char *word = patterns; *word;) {
            const char *const blank = std::strchr(word, ' ');
            const int length = blank ? int(blank - word) : int(std::strlen(word));
            const bool isStart = word[length - 1] == '*';
            m_patterns.push_back({QLatin1String(word, isStart ? length - 1 : length), isStart});
            word += blank ? length + 1 : length;
        }
    }

    bool contain(const QString &name) const
    {
        return std::any_of(m_patterns.begin(), m_patterns.end(),
                           [&](const Pattern &pattern) { return pattern.fits(name); });
    }

private:
    struct Pattern
    {
        QLatin1String text;
        bool isStart;

        bool fits(const QString &name) const
        {
            const bool hasLength = isStart ? name.size() >= text.size() : name.size() == text.size();
            return hasLength && (text.isEmpty() || (name.at(0) == text.at(0) && name.startsWith(text)));
        }
    };
    std::vector<Pattern> m_patterns;
};

struct Rule
{
    explicit Rule(const RouteRow &row)
        : sender(row.sender), receiver(row.receiver), series(row.series), refresh(row.refresh)
    {
    }

    bool applies(const QString &ofSeries, const QString &from, const QString &to) const
    {
        return sender.contain(from) && receiver.contain(to) && series.contain(ofSeries);
    }

    Names sender, receiver, series;
    bool refresh;
};

} // namespace

Route tokenRoute(const QString &series, const QString &sender, const QString &receiver)
{
    if (sender == receiver)
        return Route::None;
    static const std::vector<Rule> rules(Routes.begin(), Routes.end());
    const auto rule = std::find_if(rules.begin(), rules.end(),
                                   [&](const Rule &one) { return one.applies(series, sender, receiver); });
    if (rule == rules.end())
        return Route::None;
    return rule->refresh ? Route::ForwardAndRefresh : Route::Forward;
}

bool reachesDmaSettings(const QString &series, const QString &sender)
{
    return sender == QLatin1String("EXINT") || (sender == QLatin1String("SCFG") && !Names(NoScfgDma).contain(series));
}

bool parameterListRoute(const QString &series, const QString &sender, const QString &receiver)
{
    static const std::vector<Rule> rules(ParameterRoutes.begin(), ParameterRoutes.end());
    return sender != receiver && std::any_of(rules.begin(), rules.end(),
                                             [&](const Rule &one) { return one.applies(series, sender, receiver); });
}

} // namespace ChipLoom
