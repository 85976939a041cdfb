#pragma once

namespace blockhouse {

// The largest whole number not greater than scale x value / maximum. 0 where that is no number (maximum 0), and the
// nearest int where it is too large for one.
[[nodiscard]] int Percent(double value, double maximum, double scale);

} // namespace blockhouse
