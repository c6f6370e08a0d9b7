#include "platform/scanner/ScannerServer.h"

int main() {
    return velmor::ServeScanners();
}
