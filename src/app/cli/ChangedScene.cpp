#include "app/cli/ChangedScene.h"

namespace velmor {

bool CChangedScene::Change(const std::function<bool()>& change) {
    const CXSheet before = context.model.Scene().xsheet;
    const bool done = change();
    return (context.model.Scene().xsheet == before || saving.SaveXSheet()) && done;
}

} // namespace velmor
