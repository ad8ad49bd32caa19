// The doctor's answer line by line, and what it finds in folders.
#include "platform/linux/host/doctor.h"

#include "platform/linux/host/child_question.h"
#include "platform/linux/host/doctor_findings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <unistd.h>

using namespace cardsong::host;
using Path = std::filesystem::path;

namespace {

constexpr std::chrono::milliseconds kAmple{ 30'000 };
constexpr std::chrono::milliseconds kShort{ 50 };

struct Answer {
    int status;
    std::string text;
    bool operator==(const Answer&) const = default;
};

Answer AnswerOf(const std::vector<Examination>& examinations, const Options& options = {})
{
    std::FILE* const out = std::tmpfile();
    const int status = Examine(examinations, options, out);
    std::string text(2000, '\0');
    std::rewind(out);
    text.resize(std::fread(text.data(), 1, text.size(), out));
    std::fclose(out);
    return { status, text };
}

template <Verdict What>
Finding Find(const Options& options)
{
    return { What, options.cardDirectory };
}

Finding Hang(const Options&)
{
    for (;;)
        pause();
}

Finding EndTheProgram(const Options&)
{
    _exit(0);
}

TEST(Doctor, EachExaminationHasItsLineInTheOrderOfTheTable)
{
    Options options;
    options.cardDirectory = "as found";
    EXPECT_EQ(AnswerOf({ { "display", Find<Verdict::Good>, kAmple, {} },
                         { "bus", Find<Verdict::Poor>, kAmple, {} },
                         { "MP3", Find<Verdict::Bad>, kAmple, {} } },
                       options),
              (Answer{ 1, "display ok    as found\n"
                          "bus     poor  as found\n"
                          "MP3     BAD   as found\n" }));
}

TEST(Doctor, WhatThePlayerPlaysWithoutIsNoFailure)
{
    EXPECT_EQ(
        AnswerOf({ { "bus", Find<Verdict::Poor>, kAmple, {} }, { "MP3", Find<Verdict::Good>, kAmple, {} } }).status, 0);
}

TEST(Doctor, WhatHangsIsSaidInItsOwnWordsAndHoldsUpNothingElse)
{
    EXPECT_EQ(AnswerOf({ { "bus", Hang, kShort, { Verdict::Poor, "it hangs" } },
                         { "sound", Hang, kShort, { Verdict::Bad, "it hangs, too" } },
                         { "MP3", Find<Verdict::Good>, kAmple, {} } }),
              (Answer{ 1, "bus     poor  it hangs\n"
                          "sound   BAD   it hangs, too\n"
                          "MP3     ok    \n" }));
}

TEST(Doctor, WhatEndsTheProgramEndsOnlyItsOwnProcess)
{
    EXPECT_EQ(AnswerOf({ { "display", EndTheProgram, kAmple, {} }, { "MP3", Find<Verdict::Good>, kAmple, {} } }),
              (Answer{ 1, "display BAD   looking at it ended the program that looked\n"
                          "MP3     ok    \n" }));
}

TEST(Doctor, ALineIsOneLineWhateverTheNamesOfFolders)
{
    Options options;
    options.cardDirectory = "/a\nb\x1b[31m\tc 歌";
    EXPECT_EQ(AnswerOf({ { "card", Find<Verdict::Good>, kAmple, {} } }, options).text,
              "card    ok    /a?b?[31m?c 歌\n");
}

TEST(Doctor, AnAnswerThatCannotBeWrittenIsAFailure)
{
    std::FILE* const full = std::fopen("/dev/full", "w");
    const Examination examination = { "MP3", Find<Verdict::Good>, kAmple, {} };
    EXPECT_EQ(Examine({ &examination, 1 }, {}, full), 1);
    std::fclose(full);
}

class DoctorInFolders : public testing::Test {
protected:
    DoctorInFolders()
    {
        std::filesystem::create_directories(m_root);
        std::filesystem::permissions(m_root, std::filesystem::perms::all);
    }
    ~DoctorInFolders() override { std::filesystem::remove_all(m_root); }

    // As a user who may not do everything.
    template <Finding (*Look)(const Options&)>
    Finding AsUser(const Options& options) const
    {
        ChildQuestion question(
            [&] {
                constexpr uid_t kNobody = 65534;
                if (getuid() == 0 && setuid(kNobody) != 0)
                    return std::string();
                const Finding finding = Look(options);
                return std::to_string(static_cast<int>(finding.verdict)) + finding.text;
            },
            kAmple);
        const std::string text = question.Await().text;
        return text.empty() ? Finding{} : Finding{ static_cast<Verdict>(text[0] - '0'), text.substr(1) };
    }
    Finding LookAtCardIn(const Path& folder) const
    {
        Options options;
        options.cardDirectory = folder.string();
        return AsUser<LookAtCard>(options);
    }
    Finding LookAtDeviceIn(const Path& folder) const
    {
        Options options;
        options.deviceDirectory = folder.string();
        return AsUser<LookAtDeviceFolder>(options);
    }
    Path Make(const char* name) const
    {
        std::filesystem::create_directories(m_root / name);
        return m_root / name;
    }

    const Path m_root = std::filesystem::temp_directory_path() / ("cardsong-doctor-" + std::to_string(getpid()));
};

void Expect(const Finding& finding, Verdict verdict, const std::string& text)
{
    EXPECT_EQ(finding.verdict, verdict) << finding.text;
    EXPECT_EQ(finding.text, text);
}

TEST_F(DoctorInFolders, ACardIsAFolderWithSomethingInIt)
{
    const Path card = Make("card");
    std::ofstream(card / "a.mp3") << "x";
    Expect(LookAtCardIn(card), Verdict::Good, card.string());
}

TEST_F(DoctorInFolders, ACardThatIsNotThereCannotBePlayed)
{
    Expect(LookAtCardIn(m_root / "none"), Verdict::Bad,
           "there is no folder " + (m_root / "none").string() + "; --card names another one");
    std::ofstream(m_root / "file") << "x";
    Expect(LookAtCardIn(m_root / "file"), Verdict::Bad,
           "there is no folder " + (m_root / "file").string() + "; --card names another one");
}

TEST_F(DoctorInFolders, AnEmptyCardCannotBePlayed)
{
    const Path card = Make("card");
    Expect(LookAtCardIn(card), Verdict::Bad,
           card.string() + " is empty, as where a card is away; --card names another folder");
}

TEST_F(DoctorInFolders, ACardThatMayNotBeReadCannotBePlayed)
{
    const Path card = Make("card");
    std::ofstream(card / "a.mp3") << "x";
    std::filesystem::permissions(card, std::filesystem::perms::none);
    Expect(LookAtCardIn(card), Verdict::Bad, card.string() + " may not be read");
    std::filesystem::permissions(card, std::filesystem::perms::all);
}

TEST_F(DoctorInFolders, ADeviceFolderThatCanBeMadeIsGoodAndIsNotMade)
{
    const Path device = m_root / "not" / "yet";
    Expect(LookAtDeviceIn(device), Verdict::Good, device.string());
    EXPECT_FALSE(std::filesystem::exists(m_root / "not"));
}

TEST_F(DoctorInFolders, WithoutAFolderToWriteToThePlayListIsNotKept)
{
    const Path device = Make("device");
    const std::string lost =
        " cannot be written: the play list and settings will not be kept, and songs that are named "
        "not be played";
    std::filesystem::permissions(device, std::filesystem::perms::owner_read | std::filesystem::perms::others_read);
    Expect(LookAtDeviceIn(device), Verdict::Poor, device.string() + lost);
    Expect(LookAtDeviceIn(device / "below"), Verdict::Poor, (device / "below").string() + lost);
    std::filesystem::permissions(device, std::filesystem::perms::all);
    std::ofstream(m_root / "file") << "x";
    Expect(LookAtDeviceIn(m_root / "file"), Verdict::Poor, (m_root / "file").string() + lost);
    Expect(LookAtDeviceIn(m_root / "file" / "below"), Verdict::Poor, (m_root / "file" / "below").string() + lost);
}

} // namespace
