#pragma once

#include "platform/process/MessageChannel.h"
#include "platform/scanner/Scanner.h"

#include <span>

namespace velmor {

// What the program and its scanner process say to each other. Each request is answered by any number of pieces of
// news and then `Done`. What cannot be read gives empty values.

enum class ScannerMessage : std::uint8_t {
    Find,   ///< request; news: Devices
    Open,   ///< request with a device's name; news: Abilities
    Scan,   ///< request with the settings; news: Progress, Page, Ending
    Cancel, ///< request that ends the one under way; not answered
    Devices,
    Abilities,
    Progress,
    Page,
    Ending, ///< the result of a scan, as in Done, while its driver is still tidying up
    Done    ///< with the failure, empty when there was none
};

inline ScannerMessage KindOf(const CChannelMessage& message) {
    return static_cast<ScannerMessage>(message.kind);
}

CChannelMessage MessageOf(ScannerMessage kind);
CChannelMessage MessageOf(ScannerMessage kind, const std::string& text);
CChannelMessage MessageOf(ScannerMessage kind, int number);
CChannelMessage MessageOf(const CScanSettings& settings);
CChannelMessage MessageOf(const std::vector<CScannerDevice>& devices);
CChannelMessage MessageOf(const CScannerAbilities& abilities);
CChannelMessage MessageOf(const CScannedPage& page);

std::string TextOf(const CChannelMessage& message);
int NumberOf(const CChannelMessage& message);
CScanSettings SettingsOf(const CChannelMessage& message);
std::vector<CScannerDevice> DevicesOf(const CChannelMessage& message);
CScannerAbilities AbilitiesOf(const CChannelMessage& message);
/// A page whose rows are all there, no more and no less; else an empty one.
CScannedPage PageOf(const CChannelMessage& message);

} // namespace velmor
