#include "common/fm_transmitter.h"

#include "common/kernel_handles.h"
#include "common/trace_log.h"

#include <iterator>

namespace {

// The codes of the transmitter's driver. It knows from the code how many bytes to read: the size that it is given is 0.
constexpr DWORD kPowerOn = 0xD4310000;
constexpr DWORD kSetDefaultProperties = 0xD431001C;
constexpr DWORD kTuneFrequency = 0xD431000C;      // 16 bits, in hundredths of a megahertz
constexpr DWORD kSetOutputPowerRate = 0xD4310010; // 8 bits
constexpr std::uint8_t kOutputPowerRate = 110;

// What a float loses of a frequency that a person wrote with two digits, in hundredths of a megahertz, and more.
constexpr double kRoundingOfFloat = 0.001;

bool Control(const UniqueFile& transmitter, DWORD code, void* input = nullptr)
{
    DWORD returnedBytes = 0;
    return DeviceIoControl(transmitter.Get(), code, input, 0, nullptr, 0, &returnedBytes, nullptr) != FALSE;
}

void LogFailure(LPCWSTR what)
{
    TraceLog(kFmTransmitterTrace, TEXT("Error: FM Transmitter %s Fail!"), what);
}

bool Tune(const UniqueFile& transmitter, const FmSettings& settings)
{
    const std::uint32_t preset = settings.preset < std::size(settings.frequenciesMhz) ? settings.preset : 0;
    auto number = FmFrequencyNumber(settings.frequenciesMhz[preset]);
    return number && Control(transmitter, kTuneFrequency, &*number);
}

} // namespace

std::optional<std::uint16_t> FmFrequencyNumber(float frequencyMhz)
{
    const double hundredths = static_cast<double>(frequencyMhz) * 100 + kRoundingOfFloat;
    if (!(hundredths >= 1 && hundredths < 65536)) // not a number fails both
        return std::nullopt;
    return static_cast<std::uint16_t>(hundredths);
}

DWORD ApplyFmSettings()
{
    EnsureFmSettingsFile();
    FmSettings settings;
    ReadFmSettings(settings);
    if (settings.enabled == 0)
        return 0;
    const UniqueFile transmitter(CreateFileW(TEXT("FMT0:"), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                             FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!transmitter) {
        LogFailure(TEXT("create handle"));
        return 0;
    }
    if (!Control(transmitter, kPowerOn)) {
        LogFailure(TEXT("Power on"));
        return 0;
    }
    if (!Control(transmitter, kSetDefaultProperties))
        LogFailure(TEXT("set default property"));
    if (!Tune(transmitter, settings))
        LogFailure(TEXT("tune freq"));
    std::uint8_t rate = kOutputPowerRate;
    if (!Control(transmitter, kSetOutputPowerRate, &rate))
        LogFailure(TEXT("tune power rate"));
    return settings.enabled;
}
