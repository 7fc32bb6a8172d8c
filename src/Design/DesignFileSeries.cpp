#include "Design/DesignFile.h"

namespace ChipLoom {

namespace {

struct EarlyRow
{
    const char *series;    ///< names, separated by blanks
    const char *instances; ///< likewise
};

constexpr EarlyRow EarlyRows[] = {
    {"ZV32F421", "EXINT SCFG SYSTEM IRTMR"},
    {"ZV32F423 ZV32A423 ZV32F425 ZV32F402 ZV32F405 ZV32F490", "EXINT SCFG ACC SYSTEM I2S3 I2S2 I2S1 IRTMR"},
    {"ZV32L021 ZV32F011", "EXINT SCFG SYSTEM I2S2 I2S1 IRTMR"},
    {"ZV32F403A ZV32F407 ZV32A403A ZV32F413 ZV32F415 ZV32WB415 ZV32F403E ZV32F407E",
     "ADC2 EXINT DEBUG EMAC ACC ADC2 SYSTEM"},
    {"ZV32F406 ZV32F408", "EXINT SCFG SYSTEM IRTMR"},
    {"ZV32F435 ZV32F437 ZV32F455 ZV32F456 ZV32F457", "EXINT EMAC ACC SYSTEM I2S4 I2S3 I2S2 I2S1 IRTMR"},
    {"ZV32M412 ZV32M416", "USART2 USART1 CMP2 CMP1 EXINT SCFG ACC OP4 OP3 OP2 OP1 I2S2 I2S1 IRTMR SYSTEM ADC2 ADC1"},
    {"ZV32F422 ZV32F426 ZV32F6221", "EXINT SCFG ACC SYSTEM IRTMR"},
};

} // namespace

QStringList earlyInstances(const QString &series)
{
    for (const EarlyRow &row : EarlyRows) {
        if (QString::fromLatin1(row.series).split(QLatin1Char(' ')).contains(series))
            return QString::fromLatin1(row.instances).split(QLatin1Char(' '));
    }
    return {};
}

} // namespace ChipLoom
