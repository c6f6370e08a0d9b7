#include "FuzzTarget.h"
#include "image/select/PieceBytes.h"

#include <algorithm>

void velmor::fuzz::Read(Bytes input) {
    const std::optional<CPiece> piece = ReadPiece(input);
    if (!piece)
        return;
    const std::optional<CPiece> again = ReadPiece(BytesOf(*piece));
    Require(again && again->place == piece->place && std::ranges::equal(again->pixels, piece->pixels));
}
