#include "platform/linux/x11/PanelSurface.h"

#include "trace/Trace.h"

#include <algorithm>
#include <bit>

namespace orvantile::platform::x11 {

PanelSurface::PanelSurface(XConnection& connection_, xcb_window_t window_, std::uint8_t depth_)
    : connection(connection_),
      window(window_),
      depth(depth_),
      context(xcb_generate_id(connection.get())),
      buffers{Buffer(connection), Buffer(connection)} {
    xcb_create_gc(connection.get(), context, window, 0, nullptr);
    if (const auto* extension = xcb_get_extension_data(connection.get(), &xcb_shm_id);
        extension != nullptr && extension->present != 0) {
        completionEvent = static_cast<std::uint8_t>(extension->first_event + XCB_SHM_COMPLETION);
    }
    token = connection.listen([this](const auto& event) { handle(event); });
}

PanelSurface::~PanelSurface() {
    if (pixmap != XCB_PIXMAP_NONE) {
        xcb_free_pixmap(connection.get(), pixmap);
    }
    xcb_free_gc(connection.get(), context);
}

void PanelSurface::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t withoutSentFlag = 0x7f;
    if (completionEvent == 0 || (event.response_type & withoutSentFlag) != completionEvent) {
        return;
    }
    trace::mark(trace::Step::pixelsRead);
    const auto segment = std::bit_cast<const xcb_shm_completion_event_t*>(&event)->shmseg;
    for (auto& buffer : buffers) {
        if (buffer.pixels.segment() == segment) {
            buffer.busy = false;
            if (waiting && onReady) {
                waiting = false;
                onReady();
            }
        }
    }
}

bool PanelSurface::isBehind() const {
    return std::ranges::any_of(buffers, &Buffer::busy);
}

std::optional<QImage> PanelSurface::begin(QSize size) {
    const auto free = std::ranges::find(buffers, false, &Buffer::busy);
    const auto bytes = static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height()) * 4;
    waiting = free == buffers.end();
    if (waiting || !free->pixels.reserve(bytes)) {
        return std::nullopt;
    }
    drawing = &*free;
    return QImage(free->pixels.bytes(), size.width(), size.height(), qsizetype{4} * size.width(),
                  QImage::Format_ARGB32_Premultiplied);
}

void PanelSurface::commit(const QImage& pixels) {
    if (drawing == nullptr) {
        return;
    }
    fitPixmap(pixels.size());
    const auto width = static_cast<std::uint16_t>(pixels.width());
    const auto height = static_cast<std::uint16_t>(pixels.height());
    if (const auto segment = drawing->pixels.segment(); segment != 0) {
        constexpr std::uint8_t tellWhenRead = 1;
        drawing->busy = true;
        xcb_shm_put_image(connection.get(), pixmap, context, width, height, 0, 0, width, height, 0, 0, depth,
                          XCB_IMAGE_FORMAT_Z_PIXMAP, tellWhenRead, segment, 0);
    } else {
        putPlainly(pixels);
    }
    drawing = nullptr;
    // Some servers take a copy of the background, others a reference.
    xcb_change_window_attributes(connection.get(), window, XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection.get(), 0, window, 0, 0, 0, 0);
}

void PanelSurface::fitPixmap(QSize size) {
    if (size.width() <= pixmapSize.width() && size.height() <= pixmapSize.height()) {
        return;
    }
    if (pixmap != XCB_PIXMAP_NONE) {
        xcb_free_pixmap(connection.get(), pixmap); // lives on as the background until that is replaced
    }
    pixmapSize = pixmapSize.expandedTo(size);
    pixmap = xcb_generate_id(connection.get());
    xcb_create_pixmap(connection.get(), depth, pixmap, window, static_cast<std::uint16_t>(pixmapSize.width()),
                      static_cast<std::uint16_t>(pixmapSize.height()));
}

void PanelSurface::putPlainly(const QImage& pixels) const {
    constexpr std::size_t requestHeader = 32;
    const auto room = std::size_t{4} * xcb_get_maximum_request_length(connection.get()) - requestHeader;
    const auto rowBytes = static_cast<std::size_t>(pixels.bytesPerLine());
    const int most = std::max(1, static_cast<int>(room / rowBytes));
    for (int row = 0; row < pixels.height(); row += most) {
        const int rows = std::min(most, pixels.height() - row);
        xcb_put_image(connection.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context,
                      static_cast<std::uint16_t>(pixels.width()), static_cast<std::uint16_t>(rows), 0,
                      static_cast<std::int16_t>(row), 0, depth,
                      static_cast<std::uint32_t>(rowBytes * static_cast<std::size_t>(rows)),
                      pixels.constScanLine(row));
    }
}

} // namespace orvantile::platform::x11
