#include "platform/linux/kernel/fm_transmitter_device.h"

#include "platform/linux/kernel/host_files.h"
#include "platform/linux/kernel/radio_calls.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <string>

namespace cardsong::kernel {
namespace {

constexpr DWORD kPowerOn = 0xD4310000;
constexpr DWORD kSetDefaultProperties = 0xD431001C;
constexpr DWORD kTuneFrequency = 0xD431000C;      // reads 16 bits: hundredths of a megahertz
constexpr DWORD kSetOutputPowerRate = 0xD4310010; // reads 8 bits: decibels over a microvolt

constexpr int kMostRadios = 64;   // of one machine, by the kernel's own limit
constexpr int kMostControls = 64; // a driver that counts in a circle is left

// The number that a code reads from its input.
template <typename Number>
Number ReadNumber(const void* input)
{
    Number number = 0;
    std::memcpy(&number, input, sizeof number);
    return number;
}

// In the modulator's own unit, rounded.
std::uint32_t FrequencyInUnits(std::uint16_t hundredthsMhz, std::uint32_t capability)
{
    const std::uint32_t hundredths = hundredthsMhz;
    if ((capability & V4L2_TUNER_CAP_1HZ) != 0)
        return hundredths * 10'000;
    if ((capability & V4L2_TUNER_CAP_LOW) != 0)
        return hundredths * 160;         // of 62.5 Hz
    return (hundredths * 16 + 50) / 100; // of 62.5 kHz
}

class FmTransmitter final : public DeviceObject {
public:
    explicit FmTransmitter(int descriptor) : m_descriptor(descriptor) {}
    ~FmTransmitter() override { CurrentRadioCalls().Close(m_descriptor); }
    FmTransmitter(const FmTransmitter&) = delete;
    FmTransmitter& operator=(const FmTransmitter&) = delete;

    DWORD Control(DWORD code, const void* input) override
    {
        switch (code) {
        case kPowerOn: return PowerOn();
        case kSetDefaultProperties: return SetDefaultProperties();
        case kTuneFrequency: return input ? Tune(ReadNumber<std::uint16_t>(input)) : ERROR_INVALID_PARAMETER;
        case kSetOutputPowerRate:
            return input ? SetControl(V4L2_CID_TUNE_POWER_LEVEL, ReadNumber<std::uint8_t>(input))
                         : ERROR_INVALID_PARAMETER;
        default: return ERROR_INVALID_FUNCTION;
        }
    }

private:
    DWORD Call(unsigned long request, void* argument) const
    {
        return CurrentRadioCalls().Control(m_descriptor, request, argument) < 0 ? ErrorFromHost(errno) : ERROR_SUCCESS;
    }

    DWORD SetControl(std::uint32_t id, std::int32_t value) const
    {
        v4l2_control control = {};
        control.id = id;
        control.value = value;
        return Call(VIDIOC_S_CTRL, &control);
    }

    DWORD ReadModulator(v4l2_modulator& modulator) const
    {
        modulator = {};
        return Call(VIDIOC_G_MODULATOR, &modulator);
    }

    // A modulator sends while it is not muted; one that cannot be muted always does.
    DWORD PowerOn() const
    {
        v4l2_modulator modulator;
        if (const DWORD error = ReadModulator(modulator); error != ERROR_SUCCESS)
            return error;
        v4l2_queryctrl mute = {};
        mute.id = V4L2_CID_AUDIO_MUTE;
        const bool canBeMuted = Call(VIDIOC_QUERYCTRL, &mute) == ERROR_SUCCESS;
        return canBeMuted ? SetControl(V4L2_CID_AUDIO_MUTE, 0) : ERROR_SUCCESS;
    }

    // Stereo where there is stereo, and each number among the transmitter's controls as its driver presets it. The
    // first failure is the result; the others are set all the same.
    DWORD SetDefaultProperties() const
    {
        v4l2_modulator modulator;
        DWORD error = ReadModulator(modulator);
        if (error == ERROR_SUCCESS) {
            const bool isStereo = (modulator.capability & V4L2_TUNER_CAP_STEREO) != 0;
            modulator.txsubchans = isStereo ? V4L2_TUNER_SUB_STEREO : V4L2_TUNER_SUB_MONO;
            error = Call(VIDIOC_S_MODULATOR, &modulator);
        }
        v4l2_queryctrl query = {};
        query.id = V4L2_CTRL_CLASS_FM_TX;
        for (int i = 0; i < kMostControls; ++i) {
            query.id |= V4L2_CTRL_FLAG_NEXT_CTRL;
            if (Call(VIDIOC_QUERYCTRL, &query) != ERROR_SUCCESS ||
                V4L2_CTRL_ID2CLASS(query.id) != V4L2_CTRL_CLASS_FM_TX)
                break;
            const DWORD result = SetToDefault(query);
            error = error == ERROR_SUCCESS ? result : error;
        }
        return error;
    }

    DWORD SetToDefault(const v4l2_queryctrl& query) const
    {
        constexpr std::uint32_t kNotOurs = V4L2_CTRL_FLAG_DISABLED | V4L2_CTRL_FLAG_READ_ONLY | V4L2_CTRL_FLAG_INACTIVE;
        const bool isNumber = query.type == V4L2_CTRL_TYPE_INTEGER || query.type == V4L2_CTRL_TYPE_BOOLEAN ||
                              query.type == V4L2_CTRL_TYPE_MENU;
        return isNumber && (query.flags & kNotOurs) == 0 ? SetControl(query.id, query.default_value) : ERROR_SUCCESS;
    }

    // A driver would take a frequency out of its range for the nearest one: it is refused here.
    DWORD Tune(std::uint16_t hundredthsMhz) const
    {
        v4l2_modulator modulator;
        if (const DWORD error = ReadModulator(modulator); error != ERROR_SUCCESS)
            return error;
        v4l2_frequency frequency = {};
        frequency.tuner = modulator.index;
        frequency.type = V4L2_TUNER_RADIO;
        frequency.frequency = FrequencyInUnits(hundredthsMhz, modulator.capability);
        if (frequency.frequency < modulator.rangelow || frequency.frequency > modulator.rangehigh)
            return ERROR_INVALID_PARAMETER;
        return Call(VIDIOC_S_FREQUENCY, &frequency);
    }

    const int m_descriptor;
};

bool IsModulator(int descriptor)
{
    v4l2_capability facts = {};
    if (CurrentRadioCalls().Control(descriptor, VIDIOC_QUERYCAP, &facts) < 0)
        return false;
    const bool tellsOwn = (facts.capabilities & V4L2_CAP_DEVICE_CAPS) != 0;
    return ((tellsOwn ? facts.device_caps : facts.capabilities) & V4L2_CAP_MODULATOR) != 0;
}

} // namespace

std::shared_ptr<DeviceObject> OpenFmTransmitter()
{
    auto& calls = CurrentRadioCalls();
    for (int i = 0; i < kMostRadios; ++i) {
        const auto path = "/dev/radio" + std::to_string(i);
        const int descriptor = calls.Open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
        if (descriptor >= 0 && IsModulator(descriptor))
            return std::make_shared<FmTransmitter>(descriptor);
        if (descriptor >= 0)
            calls.Close(descriptor);
    }
    return nullptr;
}

} // namespace cardsong::kernel
