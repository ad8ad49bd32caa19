#include "playback/media_graph_gstreamer_volume.h"

#include "playback/media_graph.h"

#include <cmath>

namespace cardsong::playback {

double FactorOf(long volume)
{
    return volume <= kSilent ? 0.0 : std::pow(10.0, static_cast<double>(volume) / 2000.0);
}

double SideOf(long balance)
{
    const double side = 1.0 - FactorOf(-std::abs(balance));
    return balance < 0 ? -side : side;
}

} // namespace cardsong::playback
