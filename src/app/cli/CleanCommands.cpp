#include "app/cli/ChangedScene.h"
#include "app/cli/ChosenCels.h"
#include "app/cli/Commands.h"
#include "app/cli/ConsolePrompter.h"
#include "app/cli/JsonWriter.h"
#include "scene/CleanupBatch.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <utility>

namespace velmor {

namespace {

CCleanupOrder OrderOf(const CCleanArguments& arguments, std::vector<std::string> cels) {
    CCleanupOrder order;
    order.folder = arguments.cels.folder;
    order.names = std::move(cels);
    order.cleanup = arguments.cleanup;
    order.reference = arguments.reference;
    return order;
}

void WritePegs(CJsonWriter& json, const CPegs& pegs) {
    json.Key("pegs").BeginObject();
    json.Write("standard", pegs.StandardName());
    json.Write("edge", pegs.areAtTop ? "top" : "bottom");
    json.Write("x", pegs.x);
    json.Write("y", pegs.y);
    json.Write("degrees", pegs.degrees);
    json.Write("spacing", pegs.spacing);
    json.Write("confidence", pegs.confidence);
    json.EndObject();
}

void WriteJson(const std::vector<CCleanedAsset>& cels) {
    {
        CJsonWriter json(std::cout);
        json.BeginArray();
        for (const CCleanedAsset& cel : cels) {
            json.BeginObject();
            json.Write("cel", cel.name);
            json.Write("specks", cel.done.specks);
            json.Write("turned", cel.done.degrees);
            if (cel.done.pegs)
                WritePegs(json, *cel.done.pegs);
            if (const CStatus& trouble = cel.status ? cel.done.registered : cel.status; !trouble)
                json.Write("failure", trouble.Message());
            json.EndObject();
        }
        json.EndArray();
    }
    std::cout << '\n';
}

std::string PegsText(const CPegs& pegs) {
    std::ostringstream text;
    text << std::fixed << pegs.StandardName() << " pegs at the " << (pegs.areAtTop ? "top" : "bottom") << ", at "
         << std::setprecision(1) << pegs.x << ", " << pegs.y << ", by " << std::setprecision(2) << pegs.degrees
         << " degrees, " << std::lround(pegs.confidence * 100) << "% sure";
    return text.str();
}

std::string DoneText(const CCleanedUp& done) {
    std::ostringstream text;
    if (done.pegs)
        text << PegsText(*done.pegs) << "; ";
    else if (!done.registered)
        text << "no pegs found; ";
    if (done.specks > 0)
        text << done.specks << (done.specks == 1 ? " speck" : " specks") << " removed; ";
    constexpr double leastShown = 0.005;
    if (std::abs(done.degrees) >= leastShown)
        text << "turned by " << std::fixed << std::setprecision(2) << done.degrees << "; ";
    std::string parts = text.str();
    return parts.empty() ? "done" : parts.substr(0, parts.size() - 2);
}

void WriteText(const std::vector<CCleanedAsset>& cels) {
    for (const CCleanedAsset& cel : cels)
        if (cel.status) // otherwise it was told
            std::cout << cel.name << ": " << DoneText(cel.done) << '\n';
}

// Looks for pegs and changes nothing.
std::vector<CCleanedAsset> LookForPegs(const CCleanupOrder& order, const CSceneContext& context) {
    std::vector<CCleanedAsset> cels;
    for (const std::string& name : order.names) {
        CCleanedAsset& cel = cels.emplace_back();
        cel.name = name;
        CCelImg image;
        CPegs pegs;
        cel.status = CCleanupBatch(context).Read(order, name, image);
        if (cel.status)
            cel.done.registered = FindPegs(image, PegSearchOf(order.cleanup), pegs);
        if (cel.status && cel.done.registered)
            cel.done.pegs = pegs;
        else
            context.Show(name + ": " + (cel.status ? cel.done.registered : cel.status).Message());
    }
    return cels;
}

} // namespace

bool RunClean(const CCleanArguments& arguments) {
    CConsolePrompter prompter;
    const auto open = arguments.dryRun ? ReadScene : ReadSceneToChange;
    const auto read = open(arguments.cels.scene.database, arguments.cels.scene.scene, prompter);
    if (!read)
        return false;
    const std::optional<std::vector<std::string>> chosen = ChosenCels(arguments.cels, read->context);
    if (!chosen)
        return false;
    const CCleanupOrder order = OrderOf(arguments, *chosen);
    std::vector<CCleanedAsset> cels;
    bool isSaved = true;
    if (arguments.dryRun) {
        cels = LookForPegs(order, read->context);
    } else {
        CChangedScene scene(*read);
        isSaved = scene.Change([&] {
            auto cleaned = CCleanupBatch(scene.context).Run(order);
            cels = std::move(cleaned).value_or(std::vector<CCleanedAsset>());
            return cleaned.has_value();
        });
    }
    arguments.json ? WriteJson(cels) : WriteText(cels);
    return isSaved && cels.size() == order.names.size() && std::ranges::all_of(cels, [](const CCleanedAsset& cel) {
               return static_cast<bool>(cel.status) && static_cast<bool>(cel.done.registered);
           });
}

} // namespace velmor
