#include "FuzzTarget.h"
#include "acquire/Bitmap.h"
#include "platform/scanner/ScannerMessages.h"

#include <sys/socket.h>
#include <unistd.h>

namespace velmor::fuzz {

namespace {

/// The program's end of a connection over which the input has come, and nothing after it.
CMessageChannel ChannelWith(Bytes input) {
    int ends[2] = {-1, -1};
    Require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0);
    static_cast<void>(::send(ends[1], input.data(), input.size(), MSG_DONTWAIT | MSG_NOSIGNAL));
    ::close(ends[1]);
    return CMessageChannel(ends[0]);
}

void Understand(const CChannelMessage& message) {
    switch (KindOf(message)) {
    case ScannerMessage::Scan:
        SettingsOf(message);
        break;
    case ScannerMessage::Devices:
        DevicesOf(message);
        break;
    case ScannerMessage::Abilities:
        Require(AbilitiesOf(message).width >= 0);
        break;
    case ScannerMessage::Progress:
        NumberOf(message);
        break;
    case ScannerMessage::Page: {
        const CScannedPage page = PageOf(message);
        const PackedBitmap packed = page.mode == ScanMode::LineArt
                                        ? PackLineArt(page.width, page.height, page.rows)
                                        : PackTrueColor(page.width, page.height, page.rows);
        Require(packed.empty() || packed.size() == PackedBytes(packed.data()));
        break;
    }
    default:
        TextOf(message);
    }
}

} // namespace

// What either process sends the other.
void Read(Bytes input) {
    CMessageChannel channel = ChannelWith(input);
    CChannelMessage message;
    while (channel.Receive(message, 0) == CMessageChannel::Result::Message)
        Understand(message);
}

} // namespace velmor::fuzz
