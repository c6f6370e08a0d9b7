#include "platform/camera/CaptureDriver.h"

#include "platform/camera/CaptureDevice.h"
#include "platform/camera/V4l2Node.h"

#include <algorithm>
#include <map>

namespace velmor {

namespace {

/// A camera with its node, where its controls and formats are.
class CV4l2Device final : public CCaptureDevice {
public:
    CV4l2Device(const CCaptureSource& source, const CCaptureFormat& wanted)
        : CCaptureDevice(source, wanted), m_node(CV4l2Node::Open(source.name)) {}

    std::vector<CCaptureControl> Controls() const override {
        return m_node ? m_node->Controls() : std::vector<CCaptureControl>{};
    }
    bool SetControl(std::uint32_t id, int value) override { return m_node && m_node->SetControl(id, value); }
    std::vector<CCaptureFormat> Formats() const override {
        return m_node ? m_node->Formats() : std::vector<CCaptureFormat>{};
    }
    bool Connect() override {
        // A camera that was plugged in again is behind its node a new one.
        m_node = CV4l2Node::Open(Source().name);
        return m_node && CCaptureDevice::Connect();
    }

private:
    std::optional<CV4l2Node> m_node;
};

class CCaptureDrivers final : public ICaptureDrivers {
public:
    explicit CCaptureDrivers(std::vector<CVirtualCamera> virtualCameras)
        : m_virtualCameras(std::move(virtualCameras)) {}

    std::vector<std::string> Descriptions() override;
    std::unique_ptr<ICaptureDevice> Create(const std::string& description, const CCaptureFormat& wanted) override;

private:
    struct CDriver {
        std::string description;
        CCaptureSource source;
    };

    std::vector<CDriver> Drivers() const;

    std::vector<CVirtualCamera> m_virtualCameras;
};

std::vector<CCaptureDrivers::CDriver> CCaptureDrivers::Drivers() const {
    std::vector<CDriver> drivers;
    for (const std::string& name : ListV4l2Nodes()) {
        const std::optional<CV4l2Node> node = CV4l2Node::Open(name);
        if (const std::optional<std::string> card = node ? node->CardName() : std::nullopt)
            drivers.push_back({card->empty() ? name : *card, {"v4l2", name}});
    }
    for (const CVirtualCamera& camera : m_virtualCameras)
        drivers.push_back({camera.description, {"lavfi", camera.graph, false}});
    // Two cameras of one make are told apart by their nodes.
    std::map<std::string, int> uses;
    for (const CDriver& driver : drivers)
        ++uses[driver.description];
    for (CDriver& driver : drivers)
        if (uses[driver.description] > 1)
            driver.description += " (" + driver.source.name + ")";
    drivers.resize(std::min(drivers.size(), mostDrivers));
    return drivers;
}

std::vector<std::string> CCaptureDrivers::Descriptions() {
    std::vector<std::string> descriptions;
    for (const CDriver& driver : Drivers())
        descriptions.push_back(driver.description);
    return descriptions;
}

std::unique_ptr<ICaptureDevice> CCaptureDrivers::Create(const std::string& description,
                                                        const CCaptureFormat& wanted) {
    const std::vector<CDriver> drivers = Drivers();
    const auto driver = std::ranges::find(drivers, description, &CDriver::description);
    if (driver == drivers.end())
        return nullptr;
    if (driver->source.hasClock)
        return std::make_unique<CV4l2Device>(driver->source, wanted);
    return std::make_unique<CCaptureDevice>(driver->source, wanted);
}

} // namespace

std::unique_ptr<ICaptureDrivers> MakeCaptureDrivers(std::vector<CVirtualCamera> virtualCameras) {
    return std::make_unique<CCaptureDrivers>(std::move(virtualCameras));
}

} // namespace velmor
