#include "platform/linux/sound/sound_player.h"

#include "platform/linux/sound/sound_chain.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace cardsong::sound {

namespace {

// A sound server still holds the last moment of a sound that is over by the clock.
constexpr std::chrono::milliseconds kLastMoment{ 60 };

struct Player {
    std::mutex mutex; // guards all below
    std::condition_variable changed;
    std::optional<Sound> next;
    bool isStopped = false; // the sound that plays is to end
    bool isOver = false;    // it has come to its end
    bool isWorking = false; // there is a thread
};

Player& ThePlayer()
{
    static auto* const s_player = new Player; // a thread that waits for its server may outlive the program's statics
    return *s_player;
}

void NoteEnd()
{
    Player& player = ThePlayer();
    const std::lock_guard lock(player.mutex);
    player.isOver = true;
    player.changed.notify_all();
}

void Play(Player& player, std::unique_lock<std::mutex>& lock, Sound sound)
{
    player.isStopped = false;
    player.isOver = false;
    lock.unlock();
    {
        const SoundChain chain(std::move(sound), NoteEnd);
        lock.lock();
        const auto isStopped = [&player] { return player.isStopped; };
        player.changed.wait(lock, [&] { return player.isOver || player.isStopped; });
        player.changed.wait_for(lock, kLastMoment, isStopped);
        lock.unlock();
    }
    lock.lock();
}

void Work()
{
    Player& player = ThePlayer();
    std::unique_lock lock(player.mutex);
    while (player.next) {
        Sound sound = std::move(*player.next);
        player.next.reset();
        Play(player, lock, std::move(sound));
    }
    player.isWorking = false;
    player.changed.notify_all();
}

void Stop(Player& player)
{
    player.next.reset();
    player.isStopped = true;
    player.changed.notify_all();
}

} // namespace

void StartSound(Sound sound)
{
    Player& player = ThePlayer();
    const std::lock_guard lock(player.mutex);
    Stop(player);
    player.next = std::move(sound);
    if (!std::exchange(player.isWorking, true))
        std::thread(Work).detach();
}

void StopSound()
{
    Player& player = ThePlayer();
    const std::lock_guard lock(player.mutex);
    Stop(player);
}

bool EndSound(std::chrono::milliseconds limit)
{
    Player& player = ThePlayer();
    std::unique_lock lock(player.mutex);
    Stop(player);
    return player.changed.wait_for(lock, limit, [&player] { return !player.isWorking; });
}

} // namespace cardsong::sound
