#include "app/cli/CleanGrammar.h"

#include "app/cli/ExitStatus.h"
#include "image/clean/LineWeight.h"

namespace velmor {

void CCleanGrammar::AddTo(const AddCels& addCels, CommandRun& run) {
    m_addCels = addCels;
    m_run = &run;
    CLI::App* despeckle = AddCommand("despeckle", "Take specks off, and leave the paint around them");
    despeckle->add_option("--size", m_clean.cleanup.specks, "Pixels that a speck has at most")
        ->required()
        ->check(CLI::Range(1, CCleanup::mostSpecks));
    AddWeight("thicken", "Make lines thicker on either side", 1);
    AddWeight("thin", "Make lines thinner on either side, down to one pixel", -1);
    AddRegister();
    AddCleanup();
}

CLI::App* CCleanGrammar::AddCommand(const char* name, const char* description) {
    CLI::App* command = m_addCels(name, description, m_clean.cels);
    command->add_flag("--json", m_clean.json, "Report as JSON");
    command->callback([this] { *m_run = [this] { return RunClean(m_clean) ? statusDone : statusFailed; }; });
    return command;
}

void CCleanGrammar::AddWeight(const char* name, const char* description, int sign) {
    AddCommand(name, description)
        ->add_option_function<int>(
            "--by", [this, sign](int pixels) { m_clean.cleanup.weight = sign * pixels; }, "Pixels")
        ->required()
        ->check(CLI::Range(1, mostLineWeightChange));
}

void CCleanGrammar::AddRegister() {
    CLI::App* command = AddCommand("register", "Turn and move cels so that their peg holes lie on one another");
    AddPlace(*command, nullptr);
    command->add_flag("--dry-run", m_clean.dryRun, "Say where the peg holes are, and change nothing");
    command->callback([this] {
        m_clean.cleanup.registers = true;
        *m_run = [this] { return RunClean(m_clean) ? statusDone : statusFailed; };
    });
}

void CCleanGrammar::AddCleanup() {
    CLI::App* command = AddCommand("cleanup", "Do several of these at once");
    CCleanup& cleanup = m_clean.cleanup;
    command->add_option("--despeckle", cleanup.specks, "Pixels that a speck has at most")
        ->check(CLI::Range(1, CCleanup::mostSpecks));
    CLI::Option* thicken = command->add_option("--thicken", cleanup.weight, "Pixels on either side of a line")
                               ->check(CLI::Range(1, mostLineWeightChange));
    command
        ->add_option_function<int>(
            "--thin", [&cleanup](int pixels) { cleanup.weight = -pixels; }, "Pixels on either side of a line")
        ->check(CLI::Range(1, mostLineWeightChange))
        ->excludes(thicken);
    CLI::Option* registers = command->add_flag("--register", cleanup.registers, "Put the peg holes on one another");
    AddPlace(*command, registers);
}

void CCleanGrammar::AddPlace(CLI::App& command, CLI::Option* needed) {
    CLI::Option* reference =
        command.add_option("--reference", m_clean.reference,
                           "Cel on whose peg holes the others are put; without it level, in the middle");
    if (needed != nullptr)
        reference->needs(needed);
    command.add_flag("--straighten", m_clean.cleanup.straightens,
                     "Turn level, by the peg holes or else by long straight lines");
    command.add_flag("--erase-pegs", m_clean.cleanup.erasesPegs, "Leave white paper where the holes are");
    command
        .add_option_function<double>(
            "--dpi", [this](double dpi) { m_clean.cleanup.dpi = dpi; }, "Pixels an inch, if they are known")
        ->check(CLI::Range(1.0, 4800.0));
}

} // namespace velmor
