#ifndef ORVIA_TESTS_WHOLE_PROGRAM_SIM_CHANNEL_H
#define ORVIA_TESTS_WHOLE_PROGRAM_SIM_CHANNEL_H

#include <QString>
#include <QStringList>
#include <memory>

namespace whole_program {

/// A simulator that was started: what it is told and what it says, in lines. It ends with this.
class SimChannel {
 public:
    virtual ~SimChannel() = default;

    virtual void Say(const QString& line) = 0;
    /// The next line it said; null if none comes.
    [[nodiscard]] virtual QString Hear() = 0;
};

/// Starts `program`, which runs on this system. Where it does not, it is a folder in which somebody
/// outside, sim_post.py, starts one for who asks.
[[nodiscard]] std::unique_ptr<SimChannel> StartSimulator(const QString& program,
                                                         const QStringList& arguments);

}  // namespace whole_program

#endif  // ORVIA_TESTS_WHOLE_PROGRAM_SIM_CHANNEL_H
