// A scratch device with the few calls that tests of its file system make again and again.
#pragma once

#include "platform/ce.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace cardsong::test {

using Names = std::vector<WString>;

class DeviceTest : public ::testing::Test {
protected:
    // The names that a search finds, in its order.
    Names All(const WString& pattern)
    {
        Names names;
        WIN32_FIND_DATAW data = {};
        const HANDLE find = FindFirstFileW(pattern.c_str(), &data);
        if (find == INVALID_HANDLE_VALUE)
            return names;
        do
            names.emplace_back(data.cFileName);
        while (FindNextFileW(find, &data));
        EXPECT_TRUE(FindClose(find));
        return names;
    }
    // The first 64 bytes of a file, or "(no file)".
    std::string Contents(const WString& path)
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 3, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return "(no file)";
        char buffer[64] = {};
        DWORD got = 0;
        EXPECT_TRUE(ReadFile(file, buffer, sizeof buffer, &got, nullptr));
        EXPECT_TRUE(CloseHandle(file));
        return std::string(buffer, got);
    }
    // Writes at the start of a file.
    bool Write(const WString& path, DWORD disposition, std::string_view text)
    {
        const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 3, nullptr, disposition, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE)
            return false;
        DWORD done = 0;
        EXPECT_TRUE(WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &done, nullptr));
        return CloseHandle(file) != FALSE;
    }

    ScratchDevice device;
};

} // namespace cardsong::test
