#include "ui/controls/ScrollView.h"

#include "ui/controls/OverlayScrollBar.h"
#include "ui/popover/Bubble.h"

#include <QEvent>
#include <QLayout>
#include <QLinearGradient>
#include <QPainter>

namespace orvella {

namespace {

constexpr int kFadeHeight = 24;
constexpr int kBarWidth = 12;

} // namespace

/// Lies over the content and lets it fade at an edge beyond which there is more.
class ScrollView::Fade final : public QWidget {
public:
    Fade(const Look& look, const QScrollBar& position, QWidget* parent)
        : QWidget(parent)
        , m_look(look)
        , m_position(position)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        connect(&position, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
        connect(&position, &QScrollBar::rangeChanged, this, qOverload<>(&QWidget::update));
        connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        // The content ends at the upper corners of the popover, but not at the lower ones if something is pinned there.
        QPainterPath corners;
        corners.addRoundedRect(QRectF(0, 0, width(), height() + kBubbleRadius), kBubbleRadius, kBubbleRadius);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipPath(corners);
        if (m_position.value() > m_position.minimum())
            paintFade(painter, 0, kFadeHeight);
        if (m_position.value() < m_position.maximum())
            paintFade(painter, height(), height() - kFadeHeight);
    }

private:
    void paintFade(QPainter& painter, int solid, int clear) const
    {
        auto colour = m_look.theme().surface;
        QLinearGradient gradient(0, solid, 0, clear);
        gradient.setColorAt(0, colour);
        colour.setAlpha(0);
        gradient.setColorAt(1, colour);
        painter.fillRect(QRect(0, std::min(solid, clear), width(), kFadeHeight), gradient);
    }

    const Look& m_look;
    const QScrollBar& m_position;
};

ScrollView::ScrollView(const Look& look, Clock& clock, QWidget* content)
    : m_bar(new OverlayScrollBar(look, clock, this))
    , m_fade(new Fade(look, *verticalScrollBar(), this))
{
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setWidgetResizable(true);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    content->installEventFilter(this);

    auto* const position = verticalScrollBar();
    connect(position, &QScrollBar::rangeChanged, m_bar, [this, position](int least, int most) {
        m_bar->setPageStep(position->pageStep());
        m_bar->setRange(least, most);
        m_bar->setVisible(most > least);
    });
    connect(position, &QScrollBar::valueChanged, m_bar, &QScrollBar::setValue);
    connect(m_bar, &QScrollBar::valueChanged, position, &QScrollBar::setValue);
    m_bar->hide();
}

void ScrollView::restart()
{
    verticalScrollBar()->setValue(0);
    m_bar->showForAMoment();
}

QSize ScrollView::sizeHint() const
{
    const auto* const content = widget();
    const auto width = this->width();
    return {width,
        content->layout()->hasHeightForWidth() ? content->layout()->heightForWidth(width)
                                               : content->sizeHint().height()};
}

bool ScrollView::event(QEvent* event)
{
    const bool isDone = QScrollArea::event(event);
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::LayoutDirectionChange)
        arrange();
    return isDone;
}

void ScrollView::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    arrange();
}

bool ScrollView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}

void ScrollView::arrange()
{
    const bool isRightToLeft = layoutDirection() == Qt::RightToLeft;
    m_bar->setGeometry(isRightToLeft ? 0 : width() - kBarWidth, 0, kBarWidth, height());
    m_fade->setGeometry(rect());
    m_fade->raise();
    m_bar->raise();
}

} // namespace orvella
