// A radio modulator that nobody hears, in the place of this machine's: it writes down what it is told.
#pragma once

#include "platform/linux/kernel/radio_calls.h"

#include <cerrno>
#include <cstdint>
#include <linux/videodev2.h>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace cardsong::test {

class FakeRadio final : public kernel::RadioCalls {
public:
    FakeRadio() { kernel::InstallRadioCalls(this); }
    ~FakeRadio() override { kernel::InstallRadioCalls(nullptr); }

    // "/dev/radio1" is the modulator; "/dev/radio0" only hears.
    int Open(const char* path, int) override
    {
        const std::string name = path;
        if (name == "/dev/radio0" || (name == "/dev/radio1" && isThere)) {
            ++openCount;
            return name == "/dev/radio0" ? kReceiver : kModulator;
        }
        errno = ENOENT;
        return -1;
    }
    void Close(int descriptor) override
    {
        --openCount;
        if (descriptor == kModulator)
            told.emplace_back("close");
    }
    int Control(int descriptor, unsigned long request, void* argument) override
    {
        switch (request) {
        case VIDIOC_QUERYCAP: return TellCapabilities(descriptor, *static_cast<v4l2_capability*>(argument));
        case VIDIOC_G_MODULATOR: return TellModulator(*static_cast<v4l2_modulator*>(argument));
        case VIDIOC_S_MODULATOR: return Take("subchannels", static_cast<const v4l2_modulator*>(argument)->txsubchans);
        case VIDIOC_S_FREQUENCY: {
            const auto& frequency = *static_cast<const v4l2_frequency*>(argument);
            return Take(frequency.type == V4L2_TUNER_RADIO ? "frequency" : "wrong type", frequency.frequency);
        }
        case VIDIOC_QUERYCTRL: return TellControl(*static_cast<v4l2_queryctrl*>(argument));
        case VIDIOC_S_CTRL: {
            const auto& control = *static_cast<const v4l2_control*>(argument);
            return Take(NameOf(control.id), static_cast<std::uint32_t>(control.value));
        }
        default: return Fail(ENOTTY);
        }
    }

    std::vector<std::string> TakeTold() { return std::exchange(told, {}); }

    bool isThere = true;
    std::uint32_t capability = V4L2_TUNER_CAP_LOW | V4L2_TUNER_CAP_STEREO;
    std::uint32_t rangeLow = 76U * 16000;
    std::uint32_t rangeHigh = 108U * 16000;
    bool canBeMuted = true;
    std::set<std::string> refused; // what it is told in vain
    std::vector<std::string> told;
    int openCount = 0;

private:
    static constexpr int kReceiver = 100;
    static constexpr int kModulator = 101;

    static int Fail(int error)
    {
        errno = error;
        return -1;
    }
    int Take(const std::string& what, std::uint32_t value)
    {
        told.push_back(what + " " + std::to_string(value));
        return refused.contains(what) ? Fail(EIO) : 0;
    }
    static int TellCapabilities(int descriptor, v4l2_capability& facts)
    {
        facts.capabilities = V4L2_CAP_RADIO | V4L2_CAP_MODULATOR | V4L2_CAP_DEVICE_CAPS; // of the whole card
        facts.device_caps = V4L2_CAP_RADIO | (descriptor == kModulator ? V4L2_CAP_MODULATOR : V4L2_CAP_TUNER);
        return 0;
    }
    int TellModulator(v4l2_modulator& modulator) const
    {
        if (refused.contains("modulator"))
            return Fail(EIO);
        modulator.capability = capability;
        modulator.rangelow = rangeLow;
        modulator.rangehigh = rangeHigh;
        return 0;
    }
    // A pilot tone that is on by itself, a text, a number that is only read, and the first of another class.
    int TellControl(v4l2_queryctrl& query) const
    {
        switch (query.id) {
        case V4L2_CID_AUDIO_MUTE: return canBeMuted ? 0 : Fail(EINVAL);
        case V4L2_CTRL_CLASS_FM_TX | V4L2_CTRL_FLAG_NEXT_CTRL:
            return Describe(query, V4L2_CID_RDS_TX_PS_NAME, V4L2_CTRL_TYPE_STRING, 0);
        case V4L2_CID_RDS_TX_PS_NAME | V4L2_CTRL_FLAG_NEXT_CTRL:
            return Describe(query, V4L2_CID_AUDIO_LIMITER_DEVIATION, V4L2_CTRL_TYPE_INTEGER, V4L2_CTRL_FLAG_READ_ONLY);
        case V4L2_CID_AUDIO_LIMITER_DEVIATION | V4L2_CTRL_FLAG_NEXT_CTRL:
            return Describe(query, V4L2_CID_PILOT_TONE_ENABLED, V4L2_CTRL_TYPE_BOOLEAN, 0);
        case V4L2_CID_PILOT_TONE_ENABLED | V4L2_CTRL_FLAG_NEXT_CTRL:
            return Describe(query, V4L2_CTRL_CLASS_FLASH | 0x900, V4L2_CTRL_TYPE_BOOLEAN, 0);
        default: return Fail(EINVAL);
        }
    }
    static int Describe(v4l2_queryctrl& query, std::uint32_t id, std::uint32_t type, std::uint32_t flags)
    {
        query.id = id;
        query.type = type;
        query.flags = flags;
        query.default_value = 1;
        return 0;
    }
    static std::string NameOf(std::uint32_t id)
    {
        switch (id) {
        case V4L2_CID_AUDIO_MUTE: return "mute";
        case V4L2_CID_PILOT_TONE_ENABLED: return "pilot tone";
        case V4L2_CID_TUNE_POWER_LEVEL: return "power";
        default: return "control " + std::to_string(id);
        }
    }
};

} // namespace cardsong::test
