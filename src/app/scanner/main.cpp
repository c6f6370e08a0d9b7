#include "platform/ScannerServer.h"

int main() {
    return velmor::ServeScanners();
}
