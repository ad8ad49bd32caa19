// The size of the device's screen, in its own pixels.
#pragma once

constexpr int kScreenWidthPx = 320;
constexpr int kScreenHeightPx = 240;
