#include "scope/scope_data.h"

#include "base/number.h"

namespace servo::scope {

bool ScopeData::drawn(int channel) const {
    const ScopeChannel& curve = channels.at(static_cast<std::size_t>(channel));
    return curve.enable && !curve.hide;
}

double offset_of(const ScopeChannel& channel) {
    return -base::leading_number(channel.offsetText);
}

}  // namespace servo::scope
