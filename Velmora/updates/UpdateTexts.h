#pragma once

#include "updates/UpdateState.h"

#include <QCoreApplication>
#include <QString>

namespace orvella {

/// What the viewer reads about an update. Plain text throughout.
class UpdateTexts final {
    Q_DECLARE_TR_FUNCTIONS(UpdateTexts)

public:
    UpdateTexts() = delete;

    /// One line, for every stage.
    [[nodiscard]] static QString headline(const UpdateState& state);
    /// What there is to say besides; may be empty.
    [[nodiscard]] static QString detail(const UpdateState& state);

private:
    static QString activity(PackageProgress::Activity activity);
    static QString reason(const PackageTrouble& trouble);
};

} // namespace orvella
