#pragma once

#include "image/Palette.h"
#include "scene/SceneContext.h"

#include <functional>
#include <string>

namespace velmor {

struct CColorRequest;
struct CColorValues;

/// What an edited colour may be repainted in.
struct CColorRepaint {
    /// The question for it; empty while there is nothing to repaint.
    std::function<std::string()> question;
    std::function<void(const CColor& from, const CColor& to)> repaint;
};

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
    /// Foreground and background change places.
    void SwapColors();
    /// Moves an entry to another place; those between move up or down.
    void MoveColor(int from, int to);
    /// Adds the colours of a file of another program that are not there yet, as many as there is room for.
    void AskAndImportPalette();
    void AskAndExportPalette();
    void SetRepaint(CColorRepaint repaint) { m_repaint = std::move(repaint); }
    void SetBrush(int brush);
    void SetPen(int pen);
    void SetBucketMode(int mode);
    /// What is out of range is held to it.
    void SetFill(const CFillChoices& fill);
    /// Asks how the bucket fills.
    void EditFillSettings();
    /// Brush, pen, bucket mode and fill choices as they were last chosen.
    void ReadChoices();
    [[nodiscard]] bool SaveColors() const;
    /// From a damaged file, which is told, come the entries that can be read, or the default palette; false then.
    [[nodiscard]] bool LoadColors();
    /// The default palette, with black and white as the current colours.
    void ClearPalette();

private:
    /// With the names that the file has no letters for. A damaged file of the folder is set aside first.
    [[nodiscard]] bool Save(const CPalette& palette) const;
    [[nodiscard]] bool SetDamagedFileAside(const Path& file) const;
    void LoadNames(const Path& file);
    [[nodiscard]] bool KeepAside(const Path& file, const char* what) const;
    CColorRequest Request(const CColorValues& initial) const;
    /// Writes the changed palette and only then takes it over, so that the file always matches what is shown.
    /// `deed` names the step; `foregroundEntry` is where the foreground's entry stands in it. Returns whether it
    /// could be written.
    bool Adopt(const std::string& deed, CPalette changed, int foregroundEntry);

    CSceneContext m_context;
    CColorRepaint m_repaint;
};

} // namespace velmor
