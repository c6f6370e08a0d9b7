#include "app/cli/ChangedScene.h"

namespace velmor {

bool CChangedScene::Change(const std::function<bool()>& change) {
    const CScene before = context.model.Scene();
    const bool done = change();
    return (context.model.Scene() == before || saving.SaveXSheet()) && done;
}

} // namespace velmor
