#pragma once

#include "render/painting/Releaser.h"

#include <pango/pangocairo.h>

#include <memory>

namespace render {

/// Lays out lines in the units of the file, by the fonts of this machine. For one thread.
class TextLayout {
public:
    TextLayout();

    /// `families` are separated by commas; the first that is there is taken.
    void setFont(const char* families, double em, bool isBold, bool isItalic);

    [[nodiscard]] PangoContext* context() const { return theContext.get(); }
    [[nodiscard]] PangoLayout* get() const { return layout.get(); }

private:
    std::unique_ptr<PangoFontMap, Releaser<g_object_unref>> map;
    std::unique_ptr<PangoContext, Releaser<g_object_unref>> theContext;
    std::unique_ptr<PangoLayout, Releaser<g_object_unref>> layout;
};

} // namespace render
