#include "updates/UpdateWindow.h"

#include "updates/UpdateTexts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWidth = 360;
constexpr int kPadding = 24;
constexpr int kSpacing = 12;

constexpr Qt::WindowFlags kFlags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
    | Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint;

bool isUnderWay(UpdateState::Stage stage)
{
    return stage == UpdateState::Stage::checking || stage == UpdateState::Stage::installing;
}

/// An offer stands, and what is installed is.
bool mayHaveChanged(UpdateState::Stage stage)
{
    using enum UpdateState::Stage;
    return stage == upToDate || stage == heldBack || stage == checkFailed || stage == installationFailed;
}

QLabel* plainLabel(const QString& name)
{
    auto* const label = new QLabel;
    label->setObjectName(name);
    // Versions and reasons come from outside.
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setFixedWidth(kWidth);
    return label;
}

} // namespace

UpdateWindow::UpdateWindow(QDBusConnection bus, Clock& clock)
    : QWidget(nullptr, kFlags)
    , m_flow(std::move(bus), clock)
{
    setObjectName(u"updateWindow"_s);
    setWindowTitle(u"Orvella"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    rows->setSpacing(kSpacing);
    rows->setSizeConstraint(QLayout::SetFixedSize);
    rows->addWidget(headline());
    rows->addWidget(detail());
    rows->addWidget(progress());
    rows->addLayout(buttons());
    // The keyboard is in the window, not in a button of it, until the viewer goes to one.
    setFocusPolicy(Qt::StrongFocus);
    setFocus();
    connect(&m_flow, &UpdateFlow::changed, this, &UpdateWindow::refresh);
    m_flow.check();
}

void UpdateWindow::checkAgain()
{
    if (mayHaveChanged(m_flow.state().stage))
        m_flow.check();
}

void UpdateWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

QWidget* UpdateWindow::headline()
{
    m_headline = plainLabel(u"updateHeadline"_s);
    auto bold = m_headline->font();
    bold.setBold(true);
    m_headline->setFont(bold);
    return m_headline;
}

QWidget* UpdateWindow::detail()
{
    m_detail = plainLabel(u"updateDetail"_s);
    return m_detail;
}

QWidget* UpdateWindow::progress()
{
    m_progress = new QProgressBar;
    m_progress->setObjectName(u"updateProgress"_s);
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setTextVisible(false);
    return m_progress;
}

QLayout* UpdateWindow::buttons()
{
    m_install = new QPushButton(tr("Install"));
    m_install->setObjectName(u"updateInstall"_s);
    connect(m_install, &QPushButton::clicked, &m_flow, &UpdateFlow::install);
    m_close = new QPushButton;
    m_close->setObjectName(u"updateClose"_s);
    connect(m_close, &QPushButton::clicked, this, &QWidget::close);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_close);
    row->addWidget(m_install);
    return row;
}

void UpdateWindow::refresh()
{
    const auto& state = m_flow.state();
    m_headline->setText(UpdateTexts::headline(state));
    m_detail->setText(UpdateTexts::detail(state));
    m_detail->setVisible(!m_detail->text().isEmpty());
    m_install->setVisible(state.stage == UpdateState::Stage::available);
    m_install->setAccessibleName(tr("Install version %1").arg(state.newVersion));
    m_close->setText(isUnderWay(state.stage) ? tr("Cancel") : tr("Close"));
    m_close->setAccessibleName(m_close->text());
    setAccessibleDescription(m_headline->text() + u' ' + m_detail->text());
    refreshProgress();
}

void UpdateWindow::refreshProgress()
{
    const auto& state = m_flow.state();
    m_progress->setVisible(isUnderWay(state.stage));
    // Steps of a check, and of what precedes a download, say nothing about the whole.
    const bool isMeasured = state.stage == UpdateState::Stage::installing && state.progress.percent
        && (state.progress.activity == PackageProgress::Activity::downloading
            || state.progress.activity == PackageProgress::Activity::installing);
    m_progress->setRange(0, isMeasured ? 100 : 0);
    m_progress->setValue(isMeasured ? *state.progress.percent : -1);
}

} // namespace orvella
