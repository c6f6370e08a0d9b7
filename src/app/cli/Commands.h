#pragma once

#include "app/cli/NumberList.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

// What the subcommands are given, and the subcommands. Each returns whether it succeeded and has shown what is
// wrong.

struct CSceneArguments {
    std::string database;
    std::string scene; ///< may be empty where a command does without
};

struct CComposeArguments {
    CSceneArguments scene;
    int frame = 1; ///< from 1
    bool antialias = false;
    std::string output;
};

struct CFlipbookArguments {
    CSceneArguments scene;
    std::optional<std::vector<CNumberRange>> levels; ///< all when absent
    std::optional<CNumberRange> frames;
    int step = 1;
    int scaling = 50;
    int quality = 50;
    bool antialias = false;
    int cursor = 1;
    std::string output; ///< empty: "flipbook.avi" in the database
};

struct CRenderArguments {
    CSceneArguments scene;
    std::optional<std::vector<CNumberRange>> levels;
    std::optional<std::vector<CNumberRange>> frames;
    int step = 1;
    int scaling = 100;
    bool antialias = false;
    std::string format = "png";
    std::string codec; ///< empty for the default
    int quality = 100; ///< percent
    bool transparent = false;
    bool resume = false;
    std::string output;
};

enum class ImportKind { Cel, Picture, Sound };

struct CImportArguments {
    ImportKind kind = ImportKind::Cel;
    CSceneArguments scene;
    std::string folder; ///< of cels
    std::string name;   ///< empty: the next free number of the folder
    std::optional<int> threshold;
    std::vector<std::string> files;
};

[[nodiscard]] bool RunScenes(const CSceneArguments& arguments);
[[nodiscard]] bool RunInfo(const CSceneArguments& arguments, bool json);
[[nodiscard]] bool RunCompose(const CComposeArguments& arguments);
[[nodiscard]] bool RunFlipbook(const CFlipbookArguments& arguments);
[[nodiscard]] bool RunRender(const CRenderArguments& arguments);
[[nodiscard]] bool RunImport(const CImportArguments& arguments);
[[nodiscard]] bool RunCheck(const CSceneArguments& arguments);
/// Makes the scene "Demo" in the database folder, which is made when it is missing. Refuses when there is one
/// already.
[[nodiscard]] bool RunDemo(const CSceneArguments& arguments);

} // namespace velmor
