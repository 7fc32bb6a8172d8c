#pragma once

#include "GenerateCode/TextCut.h"

#include <string_view>
#include <vector>

namespace ChipLoom {

/// The block of a template that sets up one pin: where it takes values, found once and kept with it. Small, for each
/// generation reads as many of them as the chip has signals.
struct PinBlock : TextCut::Derived
{
    enum class Kind : quint8 {
        Pin,     ///< the pin of an assignment
        Setting, ///< a value of the pin's settings in an assignment
        Init,    ///< the arguments of gpio_init
        Mux      ///< those of the multiplexer's call
    };
    struct Place
    {
        Kind kind;
        quint8 member;  ///< of gpio_init_struct
        int start, end; ///< of what is replaced
    };

    explicit PinBlock(const TextCut &block);
    static const PinBlock &of(const TextCut &block) { return block.plan<PinBlock>(); }

    std::string_view text; ///< of the block
    std::vector<Place> places;
    QString muxSample; ///< the number that the multiplexer gets in the template
};

} // namespace ChipLoom
