#pragma once

#include "platform/files/Files.h"

#include <memory>
#include <string>

namespace velmor {

/// The persisted settings: a private INI file, written atomically at every change. Integers are signed 32-bit,
/// strings UTF-8. A profile without a file keeps its values in memory only.
class CProfile {
public:
    CProfile();
    /// Reads `file` when it exists; a file that cannot be read counts as empty.
    explicit CProfile(Path file);
    CProfile(CProfile&&) noexcept;
    CProfile& operator=(CProfile&&) noexcept;
    ~CProfile();

    /// The default also when the stored value is not a whole number of 32 bits.
    int GetInt(const std::string& section, const std::string& key, int defaultValue) const;
    std::string GetString(const std::string& section, const std::string& key,
                          const std::string& defaultValue) const;
    /// False when the file could not be written; the value is kept in memory all the same.
    [[nodiscard]] bool WriteInt(const std::string& section, const std::string& key, int value);
    [[nodiscard]] bool WriteString(const std::string& section, const std::string& key, const std::string& value);

private:
    class CStore;
    [[nodiscard]] bool Save() const;

    Path m_file;
    std::unique_ptr<CStore> m_store;
};

} // namespace velmor
