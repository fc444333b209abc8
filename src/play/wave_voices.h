#pragma once
// The wave voices: one short sample per voice, started, rewound and stopped by commands,
// and a whole recording that runs along with the music. Everything is loaded and
// allocated before it sounds; the audio side only reads commands from a fixed ring and
// adds samples into the output, so it never allocates, locks or waits.

#include <array>
#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "play/wave_command.h"

namespace tahrir::play {

// One mono sound and the rate it was recorded at.
struct WaveSample {
    std::vector<float> frames;
    int rate = 0;
};

// Reads any file libsndfile knows, folding its channels to one; false with `error` set.
bool ReadWaveSample(const std::filesystem::path& file, WaveSample& out, std::string& error);

// The file names of the voices, relative to the data folder.
std::string TarSampleName(int n);      // "Wav/H3-" n ".Wav"
std::string DafSampleName(int n);      // "4-" n ".Wav"
std::string SyllableSampleName(int step); // "Do.Wav" .. "Si.Wav"

// The accompaniment of a score at a tempo: beside the score, its name less ".srv" in
// lower case, "-T", the tempo, ".Wav". A file that differs only in case is taken too.
// Empty when none exists.
std::filesystem::path AccompanimentFile(const std::filesystem::path& score, int tempo);

class WaveVoices {
public:
    explicit WaveVoices(int outputRate = 44100);
    ~WaveVoices();
    WaveVoices(const WaveVoices&) = delete;
    WaveVoices& operator=(const WaveVoices&) = delete;

    // Loads every sample found in `folder`, else in `fallback`; returns how many.
    // Call before the voices sound.
    int loadSamples(const std::filesystem::path& folder, const std::filesystem::path& fallback);
    // Loads a recording for the accompaniment; it takes effect at the next mix.
    bool loadAccompaniment(const std::filesystem::path& file, std::string& error);

    // From any control thread: the command waits in the ring for the audio side.
    void post(const WaveCommand& command);
    // On the audio side (or offline, on the rendering thread): takes effect at once.
    void apply(const WaveCommand& command);
    // On the audio side: takes the waiting commands, then adds `frames` frames into the
    // two channels (`stride` floats between frames).
    void mix(float* left, float* right, int frames, int stride);

    // Where the accompaniment stands, in milliseconds of the recording.
    int accompanimentPosition() const { return m_accompanimentMs.load(std::memory_order_relaxed); }

private:
    struct Voice {
        const WaveSample* sample = nullptr;
        double position = 0; // in frames of the sample
        double step = 1;     // sample frames per output frame
        float gain = 0;      // 1 while sounding; falls to 0 in a short fade after Stop
        bool playing = false;
        bool fading = false;
    };
    Voice* voiceOf(WaveBank bank, int n);
    void takeRecording();
    void takeCommands();
    void mixVoice(Voice& v, float* left, float* right, int frames, int stride);

    int m_outputRate;
    float m_fadeStep;
    std::array<WaveSample, WaveSlots + 1> m_tar, m_daf;
    std::array<WaveSample, 8> m_syllable;
    std::array<Voice, WaveSlots + 1> m_tarVoice{}, m_dafVoice{};
    std::array<Voice, 8> m_syllableVoice{};
    Voice m_accompaniment{};

    // Recordings stay loaded until the voices go, so the audio side never frees one.
    std::vector<std::unique_ptr<WaveSample>> m_recordings;
    std::filesystem::path m_recordingFile;
    std::filesystem::file_time_type m_recordingTime;
    std::atomic<const WaveSample*> m_nextRecording{nullptr};
    std::atomic<int> m_accompanimentMs{0};

    static constexpr std::size_t kRing = 1024;
    std::array<WaveCommand, kRing> m_ring{};
    std::atomic<std::size_t> m_head{0}; // next to read (audio side)
    std::atomic<std::size_t> m_tail{0}; // next to write (control side)
    std::mutex m_posting;                // between control threads only
};

} // namespace tahrir::play
