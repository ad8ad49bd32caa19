#include "platform/ce.h"
#include "platform/device_tree.h"
#include "platform/linux/kernel/pe_image.h"
#include "platform/linux/kernel/resource_modules.h"
#include "tests/platform/kernel/module_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>

namespace cardsong::kernel {
namespace {

using test::ModuleBuilder;
using test::ModuleKind;

std::string SampleModule(ModuleKind kind)
{
    return ModuleBuilder(kind)
        .Add({ 5, 0, u"AUDIOPLAYER", 0x0409, "dialog" })
        .AddStrings(17008, 0x0404, { u"", u"", u"Play list" })
        .Build();
}

// Reads everything that the sample holds out of a buffer of exactly the given bytes.
void ReadEverything(std::string_view bytes)
{
    const auto exact = std::make_unique<std::byte[]>(bytes.size());
    std::memcpy(exact.get(), bytes.data(), bytes.size());
    const auto image = PeImage::Open({ exact.get(), bytes.size() });
    if (!image)
        return;
    const std::pair<ResourceId, ResourceId> kIds[] = { { { 5, {} }, { 0, u"audioplayer" } },
                                                       { { 6, {} }, { 1064, {} } },
                                                       { { 77, {} }, { 1, {} } } };
    for (const auto& [type, name] : kIds) {
        const auto found = image->Find(type, name, 0x0404);
        const auto data = found.error == ResourceError::None ? image->Data(found.entryOffset) : std::nullopt;
        for (const auto byte : data.value_or(std::span<const std::byte>()))
            ASSERT_LE(std::to_integer<int>(byte), 255);
    }
}

TEST(PeImages, EveryTruncationIsRead)
{
    for (const auto kind : { ModuleKind::Pe32, ModuleKind::Pe32Plus }) {
        const auto whole = SampleModule(kind);
        for (std::size_t bytes = 0; bytes <= whole.size(); ++bytes)
            ReadEverything(std::string_view(whole).substr(0, bytes));
    }
}

TEST(PeImages, EveryByteMayBeWrong)
{
    for (const auto kind : { ModuleKind::Pe32, ModuleKind::Pe32Plus }) {
        auto spoilt = SampleModule(kind);
        for (auto& byte : spoilt) {
            const char right = byte;
            for (const char wrong : { '\0', '\x01', '\x7F', '\x80', '\xFF' }) {
                byte = wrong;
                ReadEverything(spoilt);
            }
            byte = right;
        }
    }
}

TEST(PeImages, ManyBytesMayBeWrong)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const auto whole = SampleModule(ModuleKind::Pe32);
    for (int round = 0; round < 3000; ++round) {
        auto spoilt = whole;
        for (int i = 0; i < 4; ++i)
            spoilt[random() % spoilt.size()] = static_cast<char>(random());
        ReadEverything(spoilt);
    }
}

TEST(PeImages, ATruncatedSampleHasNoStrings)
{
    const auto whole = SampleModule(ModuleKind::Pe32);
    const auto bytes = std::as_bytes(std::span(whole));
    const auto image = PeImage::Open(bytes.first(ModuleBuilder::kSectionOffset + 8));
    ASSERT_TRUE(image.has_value());
    EXPECT_EQ(image->Find({ 6, {} }, { 1064, {} }, 0).error, ResourceError::NoType);
}

struct LanguageCase {
    std::uint16_t wanted;
    const char* expected;
};

TEST(PeImages, TheLanguageWantedIsPreferred)
{
    ModuleBuilder builder(ModuleKind::Pe32);
    builder.Add({ 5, 1, {}, 0x0804, "prc" });
    builder.Add({ 5, 1, {}, 0x0404, "taiwan" });
    builder.Add({ 5, 1, {}, 0x0000, "neutral" });
    builder.Add({ 5, 1, {}, 0x0409, "english" });
    const auto file = builder.Build();
    const auto image = PeImage::Open(std::as_bytes(std::span(file)));
    ASSERT_TRUE(image.has_value());
    constexpr LanguageCase kCases[] = {
        { 0x0404, "taiwan" }, { 0x0804, "prc" }, { 0x0C04, "prc" }, { 0x0809, "english" }, { 0x0411, "neutral" }
    };
    for (const auto& testCase : kCases) {
        const auto found = image->Find({ 5, {} }, { 1, {} }, testCase.wanted);
        const auto data = image->Data(found.entryOffset);
        ASSERT_TRUE(data.has_value());
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(data->data()), data->size()), testCase.expected);
    }
}

class Modules : public ::testing::Test {
protected:
    test::ScratchDevice device;
};

TEST_F(Modules, TheProgramHasItsOwnResources)
{
    WCHAR buffer[20];
    EXPECT_EQ(LoadStringW(ProgramInstance(), 17010, buffer, 20), 0);
    device.WriteFile("system/Windows/cardsong.resources.dll", SampleModule(ModuleKind::Pe32Plus));
    InstallDeviceTree(CurrentDeviceTree());
    EXPECT_EQ(LoadStringW(ProgramInstance(), 17010, buffer, 20), 9);
    EXPECT_EQ(LoadStringW(nullptr, 17010, buffer, 20), 9);
    EXPECT_NE(FindResourceW(ProgramInstance(), u"AUDIOPLAYER", RT_DIALOG), nullptr);
}

TEST_F(Modules, AHandleOfAnotherKindIsNoModule)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_FALSE(FreeLibrary(static_cast<HMODULE>(event)));
    EXPECT_TRUE(CloseHandle(event));
    device.WriteFile("user/Windows/a.dll", SampleModule(ModuleKind::Pe32));
    const HMODULE module = LoadLibraryExW(u"a.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_FALSE(CloseHandle(module));
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(Modules, TheBytesBehindAResourceAreKnown)
{
    device.WriteFile("user/Windows/a.dll", SampleModule(ModuleKind::Pe32));
    const HMODULE module = LoadLibraryExW(u"a.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC resource = FindResourceW(module, u"AUDIOPLAYER", RT_DIALOG);
    const auto* const data = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(ResourceBytesFrom(data), 6U);
    EXPECT_EQ(ResourceBytesFrom(data + 4), 2U);
    EXPECT_EQ(ResourceBytesFrom(data + 6), 0U);
    EXPECT_EQ(ResourceBytesFrom(&device), 0U);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(ResourceBytesFrom(data), 0U);
}

TEST_F(Modules, AResourceAtAnOddPlaceIsHandedOutAligned)
{
    auto file = SampleModule(ModuleKind::Pe32);
    const auto entry = file.find("dialog") - 16;
    file[entry] = static_cast<char>(file[entry] + 1); // one byte further on: "ialog" and the padding
    device.WriteFile("user/Windows/a.dll", file);
    const HMODULE module = LoadLibraryExW(u"a.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const HRSRC resource = FindResourceW(module, u"AUDIOPLAYER", RT_DIALOG);
    const auto* const data = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(reinterpret_cast<ULONG_PTR>(data) % 4, 0U);
    EXPECT_EQ(std::string(data, 5), "ialog");
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(Modules, AForeignResourceHandleHasNoData)
{
    device.WriteFile("user/Windows/a.dll", SampleModule(ModuleKind::Pe32));
    const HMODULE module = LoadLibraryExW(u"a.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EXPECT_EQ(LoadResource(module, nullptr), nullptr);
    EXPECT_EQ(LoadResource(module, reinterpret_cast<HRSRC>(&device)), nullptr);
    EXPECT_EQ(SizeofResource(module, nullptr), 0U);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST(PeImages, EveryTruncationOfALinkedModuleIsRead)
{
    std::ifstream file(CARDSONG_TEST_MODULE, std::ios::binary);
    const std::string bytes{ std::istreambuf_iterator<char>(file), {} };
    ASSERT_FALSE(bytes.empty());
    // Steps that lie close in the headers and wide in the sections, so that the test stays quick.
    for (std::size_t cut = 0; cut < bytes.size(); cut += cut < 1024 ? 1 : 13)
        ReadEverything(std::string_view(bytes).substr(0, cut));
}

} // namespace
} // namespace cardsong::kernel
