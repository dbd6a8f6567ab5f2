#pragma once

#include "Platform/Linux/Wayland/WaylandSession.h"

#include <viewporter.h>
#include <xdg-output-unstable-v1.h>

#include <QSize>

#include <map>
#include <memory>

namespace talmo {

/// How many pixels the outputs have for each logical one: compositors tell it as a whole number, so fractions follow
/// from the sizes. The session's thread only.
class OutputScales {
public:
    explicit OutputScales(WaylandSession &session);
    ~OutputScales();
    OutputScales(const OutputScales &) = delete;
    OutputScales &operator=(const OutputScales &) = delete;

    /// Of the first output, if this one is unknown; 1 without outputs.
    double scaleOf(wl_output *output) const;

private:
    struct Output;

    void add(uint32_t name);
    void remove(uint32_t name);

    WaylandSession &m_session;
    wl_registry *m_registry = nullptr;
    zxdg_output_manager_v1 *m_manager = nullptr;
    std::map<uint32_t, std::unique_ptr<Output>> m_outputs;
};

} // namespace talmo
