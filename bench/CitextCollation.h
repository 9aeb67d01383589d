// The data layer's text collation for benchmark baselines that use SQLite's own API.
#pragma once

#include <sqlite3.h>

namespace bench {

/// Letter case ignored; a shorter text sorts first, as the data layer's
/// collation, so that the baseline's schema compares text the same way.
inline int compareCitext(void *, int na, const void *a, int nb, const void *b) {
    const int common = sqlite3_strnicmp(static_cast<const char *>(a), static_cast<const char *>(b),
                                        na < nb ? na : nb);
    return common != 0 ? common : na - nb;
}

} // namespace bench
