#pragma once

namespace velmor {

/// What a request's rule says of the values; without a rule all are taken.
template<class Rule, class Values>
bool IsAccepted(const Rule& rule, const Values& values) {
    return !rule || rule(values);
}

} // namespace velmor
