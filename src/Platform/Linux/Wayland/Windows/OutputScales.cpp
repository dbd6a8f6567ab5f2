#include "Platform/Linux/Wayland/Windows/OutputScales.h"

#include <algorithm>
#include <cstring>

namespace talmo {

struct OutputScales::Output {
    wl_output *output = nullptr;
    zxdg_output_v1 *description = nullptr;
    QSize pixels;
    QSize logical;
    int wholeScale = 1;

    ~Output()
    {
        if (description != nullptr) {
            zxdg_output_v1_destroy(description);
        }
        wl_output_destroy(output);
    }
    /// The longer sides, since a rotated output has its sides exchanged.
    double scale() const
    {
        const int most = std::max(logical.width(), logical.height());
        return most > 0 && !pixels.isEmpty() ? static_cast<double>(std::max(pixels.width(), pixels.height())) / most
                                             : wholeScale;
    }
};

OutputScales::OutputScales(WaylandSession &session)
    : m_session(session),
      m_registry(wl_display_get_registry(session.display())),
      m_manager(session.bind<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface, 2))
{
    static constexpr wl_registry_listener listener = {
        [](void *self, wl_registry *, uint32_t name, const char *interface, uint32_t) {
            if (std::strcmp(interface, wl_output_interface.name) == 0) {
                static_cast<OutputScales *>(self)->add(name);
            }
        },
        [](void *self, wl_registry *, uint32_t name) { static_cast<OutputScales *>(self)->remove(name); }};
    wl_registry_add_listener(m_registry, &listener, this);
    session.synchronise(); // The outputs,
    session.synchronise(); // and what they are like.
}

OutputScales::~OutputScales()
{
    m_outputs.clear();
    if (m_manager != nullptr) {
        zxdg_output_manager_v1_destroy(m_manager);
    }
    wl_registry_destroy(m_registry);
    m_session.flush();
}

void OutputScales::add(uint32_t name)
{
    constexpr uint32_t versionWithScale = 2;
    static constexpr wl_output_listener outputListener = {
        [](void *, wl_output *, int32_t, int32_t, int32_t, int32_t, int32_t, const char *, const char *, int32_t) {},
        [](void *self, wl_output *, uint32_t flags, int32_t width, int32_t height, int32_t) {
            if ((flags & WL_OUTPUT_MODE_CURRENT) != 0) {
                static_cast<Output *>(self)->pixels = QSize(width, height);
            }
        },
        [](void *, wl_output *) {},
        [](void *self, wl_output *, int32_t scale) { static_cast<Output *>(self)->wholeScale = scale; },
        [](void *, wl_output *, const char *) {},
        [](void *, wl_output *, const char *) {}};
    static constexpr zxdg_output_v1_listener descriptionListener = {
        [](void *, zxdg_output_v1 *, int32_t, int32_t) {},
        [](void *self, zxdg_output_v1 *, int32_t width, int32_t height) {
            static_cast<Output *>(self)->logical = QSize(width, height);
        },
        [](void *, zxdg_output_v1 *) {}, [](void *, zxdg_output_v1 *, const char *) {},
        [](void *, zxdg_output_v1 *, const char *) {}};
    auto added = std::make_unique<Output>();
    added->output =
        static_cast<wl_output *>(wl_registry_bind(m_registry, name, &wl_output_interface, versionWithScale));
    wl_output_add_listener(added->output, &outputListener, added.get());
    if (m_manager != nullptr) {
        added->description = zxdg_output_manager_v1_get_xdg_output(m_manager, added->output);
        zxdg_output_v1_add_listener(added->description, &descriptionListener, added.get());
    }
    m_outputs[name] = std::move(added);
}

void OutputScales::remove(uint32_t name)
{
    m_outputs.erase(name);
}

double OutputScales::scaleOf(wl_output *output) const
{
    const auto found = std::find_if(m_outputs.begin(), m_outputs.end(),
                                    [output](const auto &each) { return each.second->output == output; });
    const auto one = found != m_outputs.end() ? found : m_outputs.begin();
    return one != m_outputs.end() ? one->second->scale() : 1;
}

} // namespace talmo
