#pragma once

#include <QPaintDevice>

namespace tolva::desktop {

/// Paper as text is measured on it: one pixel is one twip, so metrics are as fine as any printer's and lines
/// and pages break alike on all of them. Nothing can be painted on it.
class TwipDevice final : public QPaintDevice {
  public:
    static constexpr int twips_an_inch = 1440;

    QPaintEngine* paintEngine() const override { return nullptr; }

  protected:
    int metric(PaintDeviceMetric metric) const override;
};

} // namespace tolva::desktop
