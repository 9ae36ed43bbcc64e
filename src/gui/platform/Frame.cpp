#include "platform/Frame.h"

namespace zarvion::gui {

namespace {
FrameServices* g_frame = nullptr;
}

FrameServices* Frame()
{
    return g_frame;
}

void SetFrame(FrameServices* frame)
{
    g_frame = frame;
}

} // namespace zarvion::gui
