// How large the desktop asks for everything to be.
#pragma once

#include <QByteArray>

namespace vorn {

// The window system paints nothing smaller than its own size: with a scale below 1 it makes windows smaller
// and what is in them not, so that pages and dialogs are cropped. Raises what the environment asks for to 1
// where it is below. To be called before the application object is made.
void raise_scales_below_one();

// Such a setting, "1.5", "0.5;2" or "HDMI-1=0.75;DP-1=1", with every number below 1 raised to it.
QByteArray raised_to_one(const QByteArray& scales);

}  // namespace vorn
