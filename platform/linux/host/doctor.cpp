#include "platform/linux/host/doctor.h"

#include "platform/linux/host/child_question.h"
#include "platform/linux/host/doctor_findings.h"

#include <deque>

namespace cardsong::host {
namespace {

constexpr int kFailed = 1;

// A server that works answers at once.
constexpr std::chrono::seconds kServerLimit{ 5 };
// What is read from a slow card for the first time may take long: plug-ins, the list of all fonts.
constexpr std::chrono::seconds kFileLimit{ 30 };

const Finding kFileHung = { Verdict::Bad, "reading takes longer than 30 seconds" };

const Examination kExaminations[] = {
    { "display", LookAtDisplay, kServerLimit, { Verdict::Bad, "the display server does not answer" } },
    { "sound", LookAtSound, kServerLimit, { Verdict::Bad, "the sound server does not answer" } },
    { "MP3", LookAtMp3, kFileLimit, kFileHung },
    { "WMA", LookAtWma, kFileLimit, kFileHung },
    { "card", LookAtCard, kFileLimit, kFileHung },
    { "skin", LookAtSkin, kFileLimit, kFileHung },
    { "texts", LookAtTexts, kFileLimit, kFileHung },
    { "fonts", LookAtFonts, kFileLimit, kFileHung },
    { "device", LookAtDeviceFolder, kFileLimit, kFileHung },
    { "bus",
      LookAtBus,
      kServerLimit,
      { Verdict::Poor, "the message bus does not answer: other programs cannot reach the player" } },
};

constexpr const char* kWords[] = { "ok", "poor", "BAD" };

// The verdict as one letter in front of the text.
std::string Written(const Finding& finding)
{
    return static_cast<char>('0' + static_cast<int>(finding.verdict)) + finding.text;
}

Finding Read(const ChildQuestion::Reply& reply, const Finding& hung)
{
    switch (reply.outcome) {
    case ChildQuestion::Outcome::Hung: return hung;
    case ChildQuestion::Outcome::Failed: break;
    case ChildQuestion::Outcome::Answered:
        if (!reply.text.empty())
            return { static_cast<Verdict>(reply.text[0] - '0'), reply.text.substr(1) };
    }
    return { Verdict::Bad, "looking at it ended the program that looked" };
}

// Names of folders may hold any bytes but zero.
void Print(std::FILE* out, const char* subject, const Finding& finding)
{
    std::string text = finding.text;
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ')
            c = '?';
    }
    std::fprintf(out, "%-8s%-6s%s\n", subject, kWords[static_cast<int>(finding.verdict)], text.c_str());
}

} // namespace

int Examine(std::span<const Examination> examinations, const Options& options, std::FILE* out)
{
    std::fflush(out); // a child has a copy of what waits
    std::deque<ChildQuestion> questions;
    for (const Examination& examination : examinations)
        questions.emplace_back([&] { return Written(examination.look(options)); }, examination.limit);
    int status = 0;
    for (const Examination& examination : examinations) {
        const Finding finding = Read(questions.front().Await(), examination.hung);
        questions.pop_front();
        Print(out, examination.subject, finding);
        if (finding.verdict == Verdict::Bad)
            status = kFailed;
    }
    return std::fflush(out) == 0 ? status : kFailed;
}

int RunDoctor(const Options& options)
{
    return Examine(kExaminations, options, stdout);
}

} // namespace cardsong::host
