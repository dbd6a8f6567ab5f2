#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"
#include "Platform/Linux/Wayland/Windows/OutputScales.h"

#include <layer-shell.h>

#include <QImage>

#include <functional>
#include <list>

namespace talmo {

/// A picture above all windows, by wlr-layer-shell: it never has the focus, and clicks go through it. It is shown on
/// the output that the compositor considers the current one. The session's thread only.
class LayerSurface {
public:
    /// Any thread.
    static bool isOffered(const WaylandSession &session);

    /// `onScale` is called with the pixels per logical pixel of the output that the surface is on, before it is shown
    /// and whenever that changes.
    LayerSurface(WaylandSession &session, std::function<void(double)> onScale);
    ~LayerSurface();
    LayerSurface(const LayerSurface &) = delete;
    LayerSurface &operator=(const LayerSurface &) = delete;

    double scale() const { return m_scale; }
    /// Centred at the bottom of the output's usable area, at this distance from its edge; in logical pixels.
    void show(QSize size, int bottomMargin);
    /// The picture fills the surface, whatever its own size in pixels.
    void setImage(const QImage &image);
    void hide();

private:
    struct Buffer {
        LayerSurface *owner;
        wl_buffer *proxy;
    };

    void listenToSurface();
    void handleEntered(wl_output *output);
    void handleConfigured(uint32_t serial);
    void draw();
    wl_buffer *makeBuffer(const QImage &image);
    void forget(Buffer *buffer);
    void clickThrough();

    WaylandSession &m_session;
    std::function<void(double)> m_onScale;
    OutputScales m_outputs;
    double m_scale = 1;
    wl_compositor *m_compositor;
    wl_shm *m_shm;
    zwlr_layer_shell_v1 *m_shell;
    wp_viewporter *m_viewporter;
    wl_surface *m_surface = nullptr;
    zwlr_layer_surface_v1 *m_layer = nullptr;
    wp_viewport *m_viewport = nullptr;
    QSize m_size;
    bool m_isConfigured = false;
    QImage m_image;
    std::list<Buffer> m_buffers;
};

} // namespace talmo
