#include "desktop/twip_device.h"

namespace tolva::desktop {

int TwipDevice::metric(PaintDeviceMetric metric) const {
    switch (metric) {
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return twips_an_inch;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    case PdmDepth:
        return 1;
    default:
        return 0;
    }
}

} // namespace tolva::desktop
