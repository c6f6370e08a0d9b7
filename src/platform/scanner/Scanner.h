#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

enum class ScanMode { LineArt, Color };

/// A rectangle of the scanner's glass in millimetres, from its top left corner.
struct CScanArea {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    bool operator==(const CScanArea&) const = default;
};

struct CScanSettings {
    ScanMode mode = ScanMode::LineArt;
    int resolution = 300; ///< dots per inch
    CScanArea area;       ///< empty for all that the scanner can see
    bool feeder = false;  ///< all pages of the document feeder instead of one from the glass
    int threshold = 128;  ///< grey below it is line, where the scanner has no line art of its own
};

struct CScannerDevice {
    std::string name;  ///< the system's, unique
    std::string label; ///< for the user: maker and model
};

/// What an open scanner can do.
struct CScannerAbilities {
    int leastResolution = 50;
    int mostResolution = 1200;
    std::vector<int> resolutions; ///< ascending; empty when every one of the range will do
    double width = 0;             ///< of the glass, in millimetres; 0 when it does not say
    double height = 0;
    bool hasFeeder = false;
};

/// A page. Line art: (width + 7) / 8 bytes a row, the leftmost pixel in the highest bit, a set bit black. Colour:
/// blue, green, red. The top row first.
struct CScannedPage {
    ScanMode mode = ScanMode::LineArt;
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rows;
};

/// The scanners of this machine. Their drivers take their time, so nothing here waits for one: each operation
/// starts and returns at once, works on a thread of its own, and is over when IsBusy() is false. While it is busy,
/// starting another has no effect. All calls come from one thread.
class IScanner {
public:
    virtual ~IScanner() = default;

    virtual bool IsBusy() const = 0;
    /// Looks for scanners; then Devices() has them.
    virtual void FindDevices() = 0;
    virtual std::vector<CScannerDevice> Devices() const = 0;
    /// Opens a scanner; then IsOpen() says whether that succeeded.
    virtual void Open(const std::string& name) = 0;
    virtual bool IsOpen() const = 0;
    virtual CScannerAbilities Abilities() const = 0;
    /// Scans a page, or all pages of the feeder. Pages can be taken while it is still busy.
    virtual void Scan(const CScanSettings& settings) = 0;
    virtual std::optional<CScannedPage> TakePage() = 0;
    /// Of the page being scanned, in percent; 0 when its length is unknown.
    virtual int Progress() const = 0;
    /// Why the last operation failed; empty when it did not, or was cancelled.
    virtual std::string Failure() const = 0;
    /// Stops the operation under way as soon as its driver lets go, and drops pages that were not taken.
    virtual void Cancel() = 0;
    /// Closes the scanner; may be called at any time, and cancels what is under way.
    virtual void Close() = 0;
};

} // namespace velmor
