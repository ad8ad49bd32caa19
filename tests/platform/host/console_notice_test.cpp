#include "platform/console_notice.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <thread>
#include <vector>

namespace {

using cardsong::kernel::NoteMissingPackage;
using cardsong::kernel::TellNoticesTo;
using cardsong::kernel::TellOnce;

class ConsoleNotice : public testing::Test {
protected:
    ConsoleNotice() { TellNoticesTo(m_stream); }
    ~ConsoleNotice() override
    {
        TellNoticesTo(nullptr);
        std::fclose(m_stream);
    }
    ConsoleNotice(const ConsoleNotice&) = delete;
    ConsoleNotice& operator=(const ConsoleNotice&) = delete;

    std::string Told()
    {
        std::rewind(m_stream);
        std::string text;
        for (int byte = std::fgetc(m_stream); byte != EOF; byte = std::fgetc(m_stream))
            text += static_cast<char>(byte);
        return text;
    }

    std::FILE* m_stream = std::tmpfile();
};

TEST_F(ConsoleNotice, NamesTheMissingPackageInOneLine)
{
    NoteMissingPackage("WMA songs", "gstreamer1.0-libav");
    EXPECT_EQ(Told(), "cardsong: WMA songs need the package gstreamer1.0-libav, which is not installed\n");
}

TEST_F(ConsoleNotice, IsToldOnceHoweverOftenAndFromHoweverManyThreads)
{
    std::vector<std::thread> tellers;
    for (int i = 0; i < 4; ++i)
        tellers.emplace_back([] {
            for (int again = 0; again < 50; ++again)
                TellOnce("a");
        });
    for (std::thread& teller : tellers)
        teller.join();
    TellOnce("b");
    TellOnce("a");
    EXPECT_EQ(Told(), "cardsong: a\ncardsong: b\n");
}

TEST_F(ConsoleNotice, GoesNowhereWithoutAStreamAndIsToldOnTheNext)
{
    TellNoticesTo(nullptr);
    TellOnce("a");
    EXPECT_EQ(Told(), "");
    TellNoticesTo(m_stream);
    TellOnce("a");
    EXPECT_EQ(Told(), "cardsong: a\n");
}

} // namespace
