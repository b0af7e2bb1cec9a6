#include "planning/ChannelColumn.h"

#include "platform/Letters.h"
#include "platform/RuntimeError.h"
#include "scandata/table/DataSetTable.h"
#include "workspace/records/Codes.h"

namespace Quillon {

namespace {

// 1 for A; 0 where there is none of the name.
int ChannelNamed(const std::string& name, Centerpiece::Code& centerpiece) {
    const bool eight = name.starts_with('8');
    centerpiece = eight ? Centerpiece::EightChannel : Centerpiece::SixChannel;
    const std::string letter = eight || name.starts_with('6') ? name.substr(1) : name;
    if (letter.size() != 1) return 0;
    const int channel = CapitalLetter(letter[0]) - 'A' + 1;
    return channel >= 1 && channel <= (eight ? 4 : 3) ? channel : 0;
}

} // namespace

void TakeChannel(const std::string& name, ApproachInput& input) {
    Centerpiece::Code centerpiece{};
    const int channel = ChannelNamed(name, centerpiece);
    if (channel == 0)
        RaiseError(
            "A channel is A to C of a six-channel centerpiece, 8A to 8D of an eight-channel one, not \"" +
            name + "\"");
    float inner{};
    float outer{};
    if (!ChannelRadiiAt(centerpiece, channel, static_cast<float>(input.Rpm), inner, outer))
        RaiseError("At such a speed the channels have no place");
    input.Meniscus = static_cast<double>(inner);
    input.Bottom = static_cast<double>(outer);
}

} // namespace Quillon
