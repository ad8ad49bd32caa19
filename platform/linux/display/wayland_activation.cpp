#include "platform/linux/display/wayland_activation.h"

#include <cstdlib>
#include <xdg-activation-v1-client-protocol.h>

namespace cardsong::display {

void WaylandActivation::Open(xdg_activation_v1* activation, wl_surface& surface)
{
    m_activation = activation;
    m_surface = &surface;
}

void WaylandActivation::TellStart() const
{
    const char* const proof = std::getenv("XDG_ACTIVATION_TOKEN");
    if (m_activation != nullptr && proof != nullptr && *proof != '\0')
        xdg_activation_v1_activate(m_activation, proof, m_surface);
}

void WaylandActivation::Raise(const WaylandPress& press)
{
    static constexpr xdg_activation_token_v1_listener kListener = { [](void* data, xdg_activation_token_v1*,
                                                                       const char* token) {
        auto& self = *static_cast<WaylandActivation*>(data);
        xdg_activation_v1_activate(self.m_activation, token, self.m_surface);
        self.m_token.reset();
    } };
    if (m_activation == nullptr || m_token)
        return;
    m_token.reset(xdg_activation_v1_get_activation_token(m_activation));
    xdg_activation_token_v1_add_listener(m_token.get(), &kListener, this);
    if (press.seat != nullptr)
        xdg_activation_token_v1_set_serial(m_token.get(), press.serial, press.seat);
    xdg_activation_token_v1_set_surface(m_token.get(), m_surface);
    xdg_activation_token_v1_set_app_id(m_token.get(), "cardsong");
    xdg_activation_token_v1_commit(m_token.get());
}

} // namespace cardsong::display
