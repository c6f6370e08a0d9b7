#pragma once

#include <QTest>
#include <functional>

namespace velmor::testing {

/// Lets the program go on until `holds` does. False when it has not after a time that no machine needs, however
/// slow or busy: a test that passes never waits so long.
inline bool WaitFor(const std::function<bool()>& holds) {
    return QTest::qWaitFor(holds, 60000);
}

} // namespace velmor::testing
