#pragma once

class QMainWindow;
class QWidget;

namespace velmor {

class CProfile;

/// Where windows stood and how wide their parts were, kept in a section of the profile of its own. What was written
/// by hand or for another screen and makes no sense is passed over.
class CWindowSettings {
public:
    explicit CWindowSettings(CProfile& profile) : m_profile(profile) {}

    /// False when there is nothing to restore.
    [[nodiscard]] bool RestoreGeometry(QWidget& window, const char* key) const;
    void SaveGeometry(const QWidget& window, const char* key);
    /// Of the window's tool bars.
    void RestoreState(QMainWindow& window, const char* key) const;
    void SaveState(const QMainWindow& window, const char* key);
    /// `usual` for a value that is not there or not above -1.
    int Number(const char* key, int usual) const;
    void SetNumber(const char* key, int value);

private:
    CProfile& m_profile;
};

} // namespace velmor
