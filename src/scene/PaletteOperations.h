#pragma once

#include "image/Palette.h"
#include "scene/SceneContext.h"

#include <string>

namespace velmor {

struct CColorRequest;
struct CColorValues;

/// The palette of the current folder, the two current colours and the painting choices. Every operation shows what
/// is wrong and then does nothing.
class CPaletteOperations {
public:
    explicit CPaletteOperations(CSceneContext context) : m_context(context) {}

    CColor GetColor(int index) const;
    std::string GetColorName(int index) const;
    void SetFGColor(int index);
    void SetBGColor(int index);
    void SetFGColorValue(ColorRef color);
    void SetBGColorValue(ColorRef color);
    void SetFGAlpha(std::uint8_t alpha);
    void AddColor(const CColor& color, const std::string& name);
    void EditColor(int index);
    void DeleteColor(int index);
    /// The "Add Color" button: asks for the colour, which becomes the foreground.
    void AskAndAddColor();
    /// The "Delete Color" button: asks. After the foreground's entry the one that takes its place is the
    /// foreground.
    void AskAndDeleteColor(int index);
    void SetBrush(int brush);
    void SetPen(int pen);
    void SetBucketMode(int mode);
    /// Brush, pen and bucket mode as they were last chosen.
    void ReadChoices();
    [[nodiscard]] bool SaveColors() const;
    /// From a damaged file, which is told, come the entries that can be read, or the default palette; false then.
    [[nodiscard]] bool LoadColors();
    /// The default palette, with black and white as the current colours.
    void ClearPalette();

private:
    /// A damaged file of the folder is set aside first.
    [[nodiscard]] bool Save(const CPalette& palette) const;
    [[nodiscard]] bool SetDamagedFileAside(const Path& file) const;
    CColorRequest Request(const CColorValues& initial) const;
    /// Writes the changed palette and only then takes it over, so that the file always matches what is shown.
    /// `deed` names the step; `foregroundEntry` is where the foreground's entry stands in it. Returns whether it
    /// could be written.
    bool Adopt(const std::string& deed, CPalette changed, int foregroundEntry);

    CSceneContext m_context;
};

} // namespace velmor
