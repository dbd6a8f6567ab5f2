#include "Platform/Linux/Wayland/Windows/LayerSurface.h"

#include "Base/Log.h"
#include "Platform/Linux/System/FileDescriptor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <sys/mman.h>

namespace talmo {

namespace {

constexpr quint32 compositorVersion = 4;

} // namespace

bool LayerSurface::isOffered(const WaylandSession &session)
{
    return session.offeredVersion(zwlr_layer_shell_v1_interface.name) > 0;
}

LayerSurface::LayerSurface(WaylandSession &session, std::function<void(double)> onScale)
    : m_session(session),
      m_onScale(std::move(onScale)),
      m_outputs(session),
      m_scale(m_outputs.scaleOf(nullptr)),
      m_compositor(session.bind<wl_compositor>(wl_compositor_interface, compositorVersion)),
      m_shm(session.bind<wl_shm>(wl_shm_interface, 1)),
      m_shell(session.bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, 1)),
      m_viewporter(session.bind<wp_viewporter>(wp_viewporter_interface, 1))
{
}

LayerSurface::~LayerSurface()
{
    hide();
    for (const auto &buffer : m_buffers) {
        wl_buffer_destroy(buffer.proxy);
    }
    if (m_viewporter != nullptr) {
        wp_viewporter_destroy(m_viewporter);
    }
    wl_proxy_destroy(reinterpret_cast<wl_proxy *>(m_shell)); // NOLINT: every protocol object is a proxy.
    wl_shm_destroy(m_shm);
    wl_compositor_destroy(m_compositor);
    m_session.flush();
}

void LayerSurface::show(QSize size, int bottomMargin)
{
    hide();
    m_size = size;
    m_surface = wl_compositor_create_surface(m_compositor);
    listenToSurface();
    // No output: the compositor takes the one with the focused window.
    m_layer = zwlr_layer_shell_v1_get_layer_surface(m_shell, m_surface, nullptr, ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY,
                                                    "talmo-overlay");
    static constexpr zwlr_layer_surface_v1_listener listener = {
        [](void *self, zwlr_layer_surface_v1 *, uint32_t serial, uint32_t, uint32_t) {
            static_cast<LayerSurface *>(self)->handleConfigured(serial);
        },
        [](void *self, zwlr_layer_surface_v1 *) { static_cast<LayerSurface *>(self)->hide(); }};
    zwlr_layer_surface_v1_add_listener(m_layer, &listener, this);
    zwlr_layer_surface_v1_set_size(m_layer, static_cast<quint32>(size.width()), static_cast<quint32>(size.height()));
    zwlr_layer_surface_v1_set_anchor(m_layer, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM);
    zwlr_layer_surface_v1_set_margin(m_layer, 0, 0, bottomMargin, 0);
    zwlr_layer_surface_v1_set_keyboard_interactivity(m_layer, 0);
    clickThrough();
    if (m_viewporter != nullptr) {
        m_viewport = wp_viewporter_get_viewport(m_viewporter, m_surface);
        wp_viewport_set_destination(m_viewport, size.width(), size.height());
    }
    wl_surface_commit(m_surface); // The answer is the first configuration.
    m_session.flush();
}

void LayerSurface::clickThrough()
{
    auto *nowhere = wl_compositor_create_region(m_compositor);
    wl_surface_set_input_region(m_surface, nowhere);
    wl_region_destroy(nowhere);
}

void LayerSurface::listenToSurface()
{
    // Newer versions of the protocol have further events, which the bound version never sends.
    static constexpr wl_surface_listener listener = [] {
        wl_surface_listener events{};
        events.enter = [](void *self, wl_surface *, wl_output *output) {
            static_cast<LayerSurface *>(self)->handleEntered(output);
        };
        events.leave = [](void *, wl_surface *, wl_output *) {};
        return events;
    }();
    wl_surface_add_listener(m_surface, &listener, this);
}

void LayerSurface::handleEntered(wl_output *output)
{
    const double scale = m_outputs.scaleOf(output);
    if (scale != m_scale) {
        m_scale = scale;
        m_onScale(scale);
    }
}

void LayerSurface::handleConfigured(uint32_t serial)
{
    zwlr_layer_surface_v1_ack_configure(m_layer, serial);
    m_isConfigured = true;
    draw();
    m_session.flush();
}

void LayerSurface::setImage(const QImage &image)
{
    m_image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    draw();
    m_session.flush();
}

void LayerSurface::draw()
{
    if (m_surface == nullptr || !m_isConfigured || m_image.isNull()) {
        return;
    }
    auto *buffer = makeBuffer(m_image);
    if (buffer == nullptr) {
        return;
    }
    if (m_viewport == nullptr) { // Then only whole scales exist.
        wl_surface_set_buffer_scale(m_surface, std::max(1, static_cast<int>(std::lround(m_scale))));
    }
    wl_surface_attach(m_surface, buffer, 0, 0);
    wl_surface_damage_buffer(m_surface, 0, 0, m_image.width(), m_image.height());
    wl_surface_commit(m_surface);
}

wl_buffer *LayerSurface::makeBuffer(const QImage &image)
{
    const auto size = image.sizeInBytes();
    const FileDescriptor file(memfd_create("talmo-overlay", MFD_CLOEXEC));
    if (!file || write(file.get(), image.constBits(), static_cast<size_t>(size)) != size) {
        generalLog().error("the overlay's picture could not be shared with the compositor");
        return nullptr;
    }
    auto *pool = wl_shm_create_pool(m_shm, file.get(), static_cast<int32_t>(size));
    auto *proxy = wl_shm_pool_create_buffer(pool, 0, image.width(), image.height(),
                                            static_cast<int32_t>(image.bytesPerLine()), WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    m_buffers.push_back({this, proxy});
    static constexpr wl_buffer_listener listener = {[](void *data, wl_buffer *) {
        auto *buffer = static_cast<Buffer *>(data);
        buffer->owner->forget(buffer);
    }};
    wl_buffer_add_listener(proxy, &listener, &m_buffers.back());
    return proxy;
}

void LayerSurface::forget(Buffer *buffer)
{
    wl_buffer_destroy(buffer->proxy);
    m_buffers.remove_if([buffer](const Buffer &each) { return &each == buffer; });
}

void LayerSurface::hide()
{
    m_isConfigured = false;
    if (auto *viewport = std::exchange(m_viewport, nullptr)) {
        wp_viewport_destroy(viewport);
    }
    if (auto *layer = std::exchange(m_layer, nullptr)) {
        zwlr_layer_surface_v1_destroy(layer);
    }
    if (auto *surface = std::exchange(m_surface, nullptr)) {
        wl_surface_destroy(surface);
    }
    m_session.flush();
}

} // namespace talmo
