#pragma once

#include "TempFolder.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace velmor::testing {

/// Makes SANE see its own test device and no other: two scanners without a paper, which draw what they are told.
/// SANE asks for its folder once, so all tests of a program share one; the device reads its options anew each time
/// SANE is started.
class CSaneTestDevice {
public:
    CSaneTestDevice() {
        ::setenv("SANE_CONFIG_DIR", Folder().Path().c_str(), 1);
        Configure({});
    }

    /// What differs from the device's defaults here: one grey-scale test pattern of 80 x 100 mm at 50 dpi.
    static void Configure(const std::map<std::string, std::string>& differences) {
        std::map<std::string, std::string> options = {{"number_of_devices", "2"},
                                                      {"mode", "Gray"},
                                                      {"depth", "8"},
                                                      {"hand-scanner", "false"},
                                                      {"three-pass", "false"},
                                                      {"three-pass-order", "RGB"},
                                                      {"resolution_min", "1.0"},
                                                      {"resolution_max", "1200.0"},
                                                      {"resolution_quant", "1.0"},
                                                      {"resolution", "50.0"},
                                                      {"test-picture", "\"Color pattern\""},
                                                      {"invert-endianess", "false"},
                                                      {"read-limit", "false"},
                                                      {"read-limit-size", "1"},
                                                      {"read-delay", "false"},
                                                      {"read-delay-duration", "1000"},
                                                      {"read-status-code", "\"Default\""},
                                                      {"fuzzy-parameters", "false"},
                                                      {"ppl-loss", "0"},
                                                      {"non-blocking", "false"},
                                                      {"select-fd", "false"},
                                                      {"enable-test-options", "false"},
                                                      {"geometry_min", "0.0"},
                                                      {"geometry_max", "200.0"},
                                                      {"geometry_quant", "1.0"},
                                                      {"tl_x", "0.0"},
                                                      {"tl_y", "0.0"},
                                                      {"br_x", "80.0"},
                                                      {"br_y", "100.0"}};
        for (const auto& [name, value] : differences)
            options[name] = value;
        std::ofstream(Folder() / "dll.conf") << "test\n";
        std::ofstream file(Folder() / "test.conf");
        for (const auto& [name, value] : options)
            file << name << ' ' << value << '\n';
    }

    /// SANE sees no scanner at all.
    static void Remove() { std::ofstream(Folder() / "dll.conf") << "\n"; }

private:
    static CTempFolder& Folder() {
        static CTempFolder folder;
        return folder;
    }
};

} // namespace velmor::testing
