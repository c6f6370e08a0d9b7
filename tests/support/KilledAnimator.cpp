// A session without a window, to be killed.

#include "KilledSession.h"

int main(int argc, char** argv) {
    using namespace velmor;
    return velmor::testing::RunKilledSession(
        argc, argv, [](CVelmorltDoc&, IPrompter&, CProfile&) { return nullptr; },
        [](CVelmorltDoc& doc) {
            doc.History().Settle();
            doc.History().TellFault();
        });
}
