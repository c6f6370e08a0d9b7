#pragma once

#include "scene/SceneContext.h"
#include "xsheet/exchange/ExchangeSheet.h"
#include "xsheet/exchange/SheetImport.h"

#include <string>
#include <vector>

namespace velmor {

/// Takes the xsheet out to a file that other programs read, and brings theirs in.
class CSheetExchange {
public:
    explicit CSheetExchange(CSceneContext context) : m_context(context) {}

    /// Says what is lost, asks for the file and writes it.
    void AskAndExport();
    /// Asks for the file and shows what would change before anything does.
    void AskAndImport();

    /// What of the scene such a file does not hold, a line each.
    std::vector<std::string> Losses() const;
    /// False, after the message, when the file cannot be written.
    [[nodiscard]] bool Write(const Path& file, ExchangeFormat format) const;
    /// False, after the message, when the file cannot be read.
    [[nodiscard]] bool Read(const Path& file, ExchangeFormat format, CExchangeSheet& sheet) const;
    /// What a sheet would make of the scene; `folder` is that of the cels of levels that nothing else tells of.
    CStatus Plan(const CExchangeSheet& sheet, const std::string& folder, CSheetImport& import) const;

private:
    Path AskExportFile(ExchangeFormat format) const;
    void Apply(CSheetImport import);
    int FramesOfSound(const std::string& name) const;
    CSceneAssets Assets(const std::string& folder) const;

    CSceneContext m_context;
};

void PutImport(CSheetImport import, CScene& scene);

/// What the end of a file's name says of its format; `otherwise` where it says nothing.
ExchangeFormat ExchangeFormatOf(const Path& file, ExchangeFormat otherwise);

} // namespace velmor
