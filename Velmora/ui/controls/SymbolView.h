#pragma once

#include "ui/look/Look.h"
#include "ui/look/Symbol.h"

#include <QWidget>

namespace orvella {

/// A symbol beside a text. It says nothing that the text does not say.
class SymbolView final : public QWidget {
    Q_OBJECT

public:
    SymbolView(const Look& look, Symbol symbol);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& m_look;
    Symbol m_symbol;
};

} // namespace orvella
