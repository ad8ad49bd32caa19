#include "tests/app/model/step.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace cardsong::test {

namespace {

struct StepName {
    StepKind kind;
    const char* name;
    int arguments;
};

constexpr StepName kNames[] = {
    { StepKind::Draws, "Draws", 1 },       { StepKind::Song, "Song", 2 },
    { StepKind::Priority, "Priority", 1 }, { StepKind::Command, "Command", 2 },
    { StepKind::Sent, "Sent", 2 },         { StepKind::Key, "Key", 1 },
    { StepKind::HeldKey, "HeldKey", 1 },   { StepKind::Tap, "Tap", 1 },
    { StepKind::Slide, "Slide", 1 },       { StepKind::Row, "Row", 1 },
    { StepKind::Check, "Check", 1 },       { StepKind::CloseLists, "CloseLists", 0 },
    { StepKind::Wait, "Wait", 1 },         { StepKind::Finish, "Finish", 0 },
    { StepKind::EndWaits, "EndWaits", 0 }, { StepKind::Break, "Break", 0 },
    { StepKind::Abort, "Abort", 0 },       { StepKind::Delete, "Delete", 1 },
    { StepKind::Restore, "Restore", 1 },   { StepKind::Become, "Become", 2 },
    { StepKind::FailInit, "FailInit", 0 }, { StepKind::Focus, "Focus", 1 },
    { StepKind::Activate, "Activate", 1 }, { StepKind::AudioState, "AudioState", 1 },
    { StepKind::Exit, "Exit", 1 },
};

Step ReadStep(const std::string& text)
{
    std::istringstream words(text);
    std::string name;
    words >> name;
    const auto* const found =
        std::ranges::find(kNames, name, [](const StepName& row) { return std::string(row.name); });
    if (found == std::end(kNames))
        throw std::invalid_argument("no step: " + text);
    Step step{ found->kind };
    if (found->arguments > 0)
        words >> step.a;
    if (found->arguments > 1)
        words >> step.b;
    if (!words)
        throw std::invalid_argument("a number is missing: " + text);
    return step;
}

} // namespace

bool StandsBeforeTheStart(StepKind kind)
{
    return kind == StepKind::Draws || kind == StepKind::Song || kind == StepKind::Priority;
}

std::string WriteScript(const Script& script)
{
    std::string text;
    for (const Step& step : script) {
        const StepName& row = *std::ranges::find(kNames, step.kind, &StepName::kind);
        text += (text.empty() ? "" : "; ") + std::string(row.name);
        if (row.arguments > 0)
            text += " " + std::to_string(step.a);
        if (row.arguments > 1)
            text += " " + std::to_string(step.b);
    }
    return text;
}

Script ReadScript(std::string_view text)
{
    Script script;
    std::istringstream steps{ std::string(text) };
    for (std::string step; std::getline(steps, step, ';');)
        if (step.find_first_not_of(" \n") != std::string::npos)
            script.push_back(ReadStep(step));
    return script;
}

} // namespace cardsong::test
