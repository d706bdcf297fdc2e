#pragma once

#include <QWidget>

namespace orvella {

class Look;
struct AvailableAd;

/// Why the viewer sees this ad.
class AdDisclosure final : public QWidget {
    Q_OBJECT

public:
    AdDisclosure(const Look& look, const AvailableAd& ad);

private:
    void fit();
};

} // namespace orvella
