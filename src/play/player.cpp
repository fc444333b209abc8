#include "play/player.h"

#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>

#include "core/instrument_table.h"

namespace tahrir::play {

namespace {

// The dispatcher asks for precise wake-ups and, where the system allows it, a real-time
// priority; without either it still works, only with coarser timing on a busy machine.
void TuneDispatcherThread() {
    prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
    sched_param param{};
    param.sched_priority = 10;
    pthread_setschedparam(pthread_self(), SCHED_FIFO, &param);
}

} // namespace

Player::Player(MidiSink* sink)
    : m_midi(sink), m_notes(m_midi, m_state, m_controls),
      m_scheduler(m_midi, m_notes, m_state, m_controls), m_timer([this] { timerLoop(); }) {
    m_clock.setInterrupt(&m_controls.StopRequest);
    watch(sink);
}

void Player::watch(MidiSink* sink) {
    if (!sink) return;
    // An output that fails ends the run as Stop does; the reason waits for the window.
    sink->onFailure([this](const std::string& why) {
        {
            std::lock_guard lock(m_failureMutex);
            m_failure = why;
        }
        m_controls.StopRequest = true;
    });
}

std::string Player::deviceFailure() const {
    std::lock_guard lock(m_failureMutex);
    return m_failure;
}

bool Player::replaceSink(MidiSink* sink) {
    std::lock_guard lock(m_idle);
    if (m_running.load()) return false;
    if (m_thread.joinable()) m_thread.join();
    if (MidiSink* old = m_midi.sink()) old->onFailure(nullptr);
    m_midi.setSink(sink);
    watch(sink);
    {
        std::lock_guard failure(m_failureMutex);
        m_failure.clear();
    }
    return true;
}

Player::~Player() {
    stop();
    wait();
    if (MidiSink* sink = m_midi.sink()) sink->onFailure(nullptr); // the sink may outlive us
    {
        std::lock_guard lock(m_timerMutex);
        m_quit = true;
    }
    m_timerWake.notify_all();
    m_timer.join();
}

void Player::startUp(int button) {
    std::lock_guard lock(m_idle);
    m_midi.StartUp();
    m_notes.pitchTable().rebuild(DefaultPitchBase);
    m_midi.PrepareChannels(KoronChannel);
    if (const auto index = core::ProgramIndexOfButton(button)) {
        m_midi.setProgramIndex(*index);
        m_midi.MidiOutputOn = true;
        m_midi.PrepareChannels();
    }
}

void Player::chooseInstrument(int button) {
    const auto index = core::ProgramIndexOfButton(button);
    if (!index) return;
    std::lock_guard lock(m_idle);
    if (m_running.load()) { // the run reprograms the voices between two events
        m_controls.PendingProgramIndex = *index;
        return;
    }
    m_midi.setProgramIndex(*index);
    m_midi.MidiOutputOn = true;
    m_midi.PrepareChannels();
}

void Player::chooseListInstrument(int row) {
    if (!core::InstrumentAt(row + 1)) return;
    std::lock_guard lock(m_idle);
    if (m_running.load()) {
        m_controls.PendingProgramIndex = row + 1;
        return;
    }
    m_midi.setProgramIndex(row + 1);
    m_midi.PrepareChannels();
}

void Player::clickTar() {
    std::lock_guard lock(m_idle);
    m_controls.TarOn = !m_controls.TarOn.load();
    if (!m_running.load()) m_midi.toggleTar(); // a run follows the flag between two lines
}

void Player::clickDaf() {
    std::lock_guard lock(m_idle);
    m_controls.DafOn = !m_controls.DafOn.load();
    if (!m_running.load()) m_midi.toggleDaf();
}

double Player::playVirtual(const core::ScoreSheet& sheet, const RunOptions& options) {
    std::lock_guard lock(m_idle);
    // Nobody can stop a run on the calling thread; a Stop pressed while idle is stale.
    m_controls.StopRequest = false;
    PlayClock virtualClock;
    return m_scheduler.PlayRun(sheet, options, virtualClock);
}

bool Player::play(const core::ScoreSheet& sheet, const RunOptions& options) {
    std::lock_guard lock(m_idle);
    if (m_running.load()) {
        m_controls.Paused = false; // Play while paused resumes
        return false;
    }
    if (m_thread.joinable()) m_thread.join();
    m_controls.StopRequest = false;
    m_running = true;
    m_thread = std::thread([this, &sheet, options] {
        TuneDispatcherThread();
        m_scheduler.PlayRun(sheet, options, m_clock);
        std::lock_guard end(m_idle);
        m_running = false;
    });
    return true;
}

void Player::wait() {
    if (m_thread.joinable()) m_thread.join();
}

void Player::setKoronBend(int value) {
    m_controls.KoronBend = value;
    std::lock_guard lock(m_idle);
    if (!m_running.load()) m_midi.setKoronBend(value);
}

bool Player::withIdleMidi(const std::function<void(MidiOut&)>& use) {
    std::lock_guard lock(m_idle);
    if (m_running.load()) return false;
    use(m_midi);
    return true;
}

void Player::setSoriBend(int value) {
    m_controls.SoriBend = value;
    std::lock_guard lock(m_idle);
    if (!m_running.load()) m_midi.setSoriBend(value);
}

void Player::setPedal(bool on) {
    m_controls.Pedal = on;
    std::lock_guard lock(m_idle);
    if (!on && !m_running.load()) m_midi.AllNotesOff();
}

std::optional<AuditionedNote> Player::auditionNote(int step, int octave, char accidental,
                                                   int milliseconds) {
    std::optional<AuditionedNote> sounded;
    {
        std::lock_guard lock(m_idle);
        if (m_running.load()) return std::nullopt;
        sounded = m_notes.auditionNote(step, octave, accidental);
    }
    if (sounded) {
        std::lock_guard lock(m_timerMutex);
        m_auditionEnd = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
        m_auditionPending = true;
    }
    m_timerWake.notify_all();
    return sounded;
}

// The audition timer: ends the note last auditioned when its time is up.
void Player::timerLoop() {
    std::unique_lock lock(m_timerMutex);
    while (!m_quit) {
        if (!m_auditionPending) {
            m_timerWake.wait(lock);
            continue;
        }
        if (m_timerWake.wait_until(lock, m_auditionEnd) == std::cv_status::timeout &&
            std::chrono::steady_clock::now() >= m_auditionEnd) {
            m_auditionPending = false;
            lock.unlock();
            {
                std::lock_guard idle(m_idle);
                m_notes.endAudition();
            }
            lock.lock();
        }
    }
}

} // namespace tahrir::play
