#pragma once

#include "ClockConfig/ZV32ConfigCLK.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace ChipLoom {

/// The searches as plain loops over everything, with the series named outright. Slow and obvious: what the fast
/// searches are compared with, and what the benchmark measures them against.
struct LiteralSearch
{
    explicit LiteralSearch(const ZV32ConfigCLK &clock)
        : series(clock.series().code), clock(clock), ms(clock.Get_PLL_MS()), ns(clock.Get_PLL_NS()),
          fr(clock.Get_PLL_FR()), fp(clock.Get_PLL_FP()), fu(clock.Get_PLL_FU()), mul(clock.Get_PLL_MUL()),
          usbdiv(clock.Get_USBDIV()), pll(clock.Get_PLLCLKValue()), sclk(clock.Get_SYSCLKValue()),
          usb(clock.Get_USBCLKValue())
    {
    }

    bool is(std::initializer_list<ZV32MCUSERIALS> group) const
    {
        return std::find(group.begin(), group.end(), series) != group.end();
    }
    bool fpGroup() const
    {
        return is({ZV32F402, ZV32F405, ZV32F490, ZV32F455, ZV32F456, ZV32F457, ZV32F406, ZV32F408});
    }
    bool fuGroup() const { return is({ZV32F402, ZV32F405, ZV32F490, ZV32F455, ZV32F456, ZV32F457}); }
    bool half() const { return is({ZV32F423, ZV32A423}); }
    double ceiling() const { return clock.GetSYSCLKValidMaxValue(); }

    void msRange(double input, int &max, int &min) const
    {
        min = 1;
        max = 15;
        bool found = false;
        for (int i = 1; i <= 15; ++i) {
            if (input / i >= 2.0 && input / i <= 16.0) {
                if (!found)
                    min = i;
                max = i;
                found = true;
            }
        }
    }

    void nsRange(double input, int m, int &max, int &min) const
    {
        double upper = is({ZV32F435, ZV32F437, ZV32F455, ZV32F456, ZV32F457}) ? 1200.0 : 1000.0;
        if (fuGroup() && clock.usbpll_isEnable())
            upper = 960.0;
        min = 31;
        max = 500;
        bool found = false;
        for (int i = 31; i <= 500; ++i) {
            const double vco = i * input / m;
            if (vco >= 500.0 && vco <= upper) {
                if (!found)
                    min = i;
                max = i;
                found = true;
            }
        }
    }

    /// All three loops; `target` is a PLL clock.
    void tripleLoop(double input, double target)
    {
        static const int frTable[] = {1, 2, 4, 8, 16, 32};
        static const int fpTable[] = {1, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30};
        const int *table = fpGroup() ? fpTable : frTable;
        const int count = fpGroup() ? 16 : 6;
        double best = 10000.0;
        int bestDivider = fpGroup() ? fp : fr;
        int msMax = 0, msMin = 0, nsMax = 0, nsMin = 0;
        msRange(input, msMax, msMin);
        for (int d = count - 1; d >= 0; --d) {
            for (int m = msMin; m <= msMax; ++m) {
                nsRange(input, m, nsMax, nsMin);
                for (int n = nsMin; n <= nsMax; ++n) {
                    const double difference = std::abs(n * input / (table[d] * m) - target);
                    if (difference < best) {
                        best = difference;
                        ms = m;
                        ns = n;
                        bestDivider = table[d];
                    }
                }
            }
        }
        fr = fpGroup() ? 0 : bestDivider;
        fp = fpGroup() ? bestDivider : 0;
    }

    void vcoFirst(double input, double usbTarget, double sclkTarget)
    {
        static const int fpTable[] = {1, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30};
        double best = 10000.0;
        int msMax = 0, msMin = 0, nsMax = 0, nsMin = 0;
        msRange(input, msMax, msMin);
        for (int m = msMin; m <= msMax; ++m) {
            nsRange(input, m, nsMax, nsMin);
            for (int n = nsMax; n >= nsMin; --n) {
                const double difference = std::abs(n * input / m - usbTarget);
                if (difference < best) {
                    best = difference;
                    ms = m;
                    ns = n;
                }
            }
        }
        best = 10000.0;
        int bestFp = fp;
        for (int d = 15; d >= 0; --d) {
            const double difference = std::abs(ns * input / (fpTable[d] * ms) - sclkTarget);
            if (difference < best) {
                best = difference;
                bestFp = fpTable[d];
            }
        }
        fp = bestFp;
        fr = 0;
    }

    void normal(double input, bool fromUsb, int min, int max)
    {
        const int inputKHz = int(1000 * input);
        const int targetKHz = fromUsb ? int(48.0 * usbdiv * 1000) : int(sclk * 1000);
        mul = qRound(double(targetKHz) / inputKHz);
        while (mul * inputKHz > ceiling() * 1000)
            --mul;
        if (mul < min)
            mul = min;
        else if (mul > max)
            mul = max;
        pll = mul * inputKHz / 1000.0;
        if (!fromUsb)
            sclk = pll;
    }

    void flexible(double input, bool fromUsb)
    {
        const bool onPll = clock.Get_SYSCLKSelect() == SYSCLK_PLL;
        double target = !fromUsb || onPll ? std::min(sclk, ceiling()) : 192.0;
        if (half())
            target *= 2;
        if (!fromUsb)
            tripleLoop(input, target);
        else if (fpGroup())
            vcoFirst(input, fuGroup() ? int(fu * 48.0) : int(48.0 * usbdiv), target);
        else
            tripleLoop(input, int(48.0 * usbdiv));
        pll = ns * input / ((fpGroup() ? fp : fr) * ms);
        if (!fromUsb || onPll)
            sclk = half() ? pll / 2 : pll;
    }

    void search(bool fromUsb)
    {
        const double input = clock.GetPllInPutValue();
        if (clock.Get_ConfigMode() == PLLMODE_NORMAL) {
            ZV32ConfigCLK bounds = clock;
            bounds.UpdatePLLMULMinMaxValue(input);
            normal(input, fromUsb, bounds.Get_PLL_MUL_Min(), bounds.Get_PLL_MUL_Max());
        } else {
            flexible(input, fromUsb);
        }
    }

    void fromSysclk()
    {
        if (clock.Get_SYSCLKSelect() == SYSCLK_PLL)
            search(false);
        if (!clock.usbpll_isEnable())
            return;
        if (fuGroup()) {
            const int n = fp * int(sclk);
            if (n % 48 == 0)
                fu = n / 48;
            fu = fu < 11 ? 11 : fu > 20 ? 20 : fu;
            if (fu == 15 || fu == 17 || fu == 19)
                fu += 1;
            usb = fp * sclk / fu;
        } else if (half()) {
            const int d = int(sclk * 2);
            if (d % 48 == 0)
                usbdiv = d / 48.0;
            usbdiv = usbdiv < 2 ? 2 : usbdiv > 8 ? 8 : usbdiv;
            usb = 2 * sclk / usbdiv;
        } else {
            const int n = int(sclk);
            if (n % 24 == 0)
                usbdiv = n / 48.0;
            const double high = is({ZV32F435, ZV32F437, ZV32F403E, ZV32F407E}) ? 7 : 4;
            usbdiv = usbdiv < 1 ? 1 : usbdiv > high ? high : usbdiv;
            usb = sclk / usbdiv;
        }
    }

    void fromUsbclk()
    {
        if (!clock.usbpll_isEnable())
            return;
        search(true);
        usb = fuGroup() ? fp * pll / fu : pll / usbdiv;
    }

    ZV32MCUSERIALS series;
    ZV32ConfigCLK clock;
    int ms, ns, fr, fp, fu, mul;
    double usbdiv, pll, sclk, usb;
};

} // namespace ChipLoom
