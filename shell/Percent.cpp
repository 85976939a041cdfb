#include "shell/Percent.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace blockhouse {

int Percent(double value, double maximum, double scale) {
    // Multiplied first: 29 / 100 is a little less than 0.29, and 100 times that would come out as 28.
    const double share = std::floor(scale * value / maximum);
    if (maximum == 0 || std::isnan(share))
        return 0;
    using Int = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<double>(share, Int::min(), Int::max()));
}

} // namespace blockhouse
