#pragma once

#include "base/Clock.h"

namespace orvella {

/// The questions for the wallet: which answer is the newest, and whether the next poll has to ask again because what is
/// shown may lack what was earned.
class WalletQuestions final {
public:
    /// One of them, from the moment at which it is asked.
    struct Question {
        qint64 number = 0;
        Instant asked;
    };

    explicit WalletQuestions(const Clock& clock);

    [[nodiscard]] Question ask();
    /// Whether the answer is news. One that a later question's answer has overtaken knows nothing of what was earned in
    /// between.
    [[nodiscard]] bool answered(const Question& question);
    void failed(const Question& question);

    /// Something may be credited by a request that is still on its way, and only an answer to a question after its end
    /// is sure to hold it.
    void doubt();

    /// Whether a question is due: the latest has failed, or the last answer is in doubt.
    [[nodiscard]] bool areOpen() const;

private:
    const Clock& m_clock;
    qint64 m_asked = 0;
    /// The latest that has had an answer, and the latest that has had none.
    qint64 m_answered = 0;
    qint64 m_failed = 0;
    /// From then on an answer holds everything. Nothing while none is doubted.
    std::optional<Instant> m_doubtedUntil;
};

} // namespace orvella
