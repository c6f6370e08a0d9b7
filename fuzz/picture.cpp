#include "StoredImage.h"

void velmor::fuzz::Read(Bytes input) {
    ReadStoredImage(input);
}
