// Pass 1: period markers on the raw 8-bit samples.

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <ostream>

#include "transcribe/note_passes.h"

namespace tahrir::transcribe {

namespace {

constexpr int kSilence = 128;

// The peak detector's minimum gap between markers: 10 samples, a period of 1100 Hz at
// 11000 samples a second, above the highest voice it is meant for. On a clean tone the
// crest is the only local maximum of a period; the gap keeps a crest made jagged by the
// 8-bit steps from marking twice.
constexpr std::int64_t kPeakGap = 10;
// Its floor: half the peak envelope, which falls by a factor of e in 1000 samples, so
// that the small maxima of noise between the crests stay under it.
constexpr double kEnvelopeDecay = 0.999;
constexpr double kFloorShare = 0.5;

class MarkerRing {
public:
    MarkerRing(std::int64_t first, bool ringAtFirst) {
        m_ring.fill(ringAtFirst ? first : 0);
        m_ring[0] = first;
    }
    MarkerRecord mark(std::int64_t position) {
        MarkerRecord record{position, {}};
        for (std::size_t j = 0; j < m_ring.size(); ++j) record.distance[j] = position - m_ring[j];
        std::copy_backward(m_ring.begin(), m_ring.end() - 1, m_ring.end());
        m_ring[0] = position;
        return record;
    }
    std::int64_t last() const { return m_ring[0]; }

private:
    std::array<std::int64_t, 9> m_ring{};
};

// The "tmp5" records, one for every sample, written through a buffer of its own.
class ViewRecords {
public:
    explicit ViewRecords(std::ostream* out) : m_out(out) {}
    ~ViewRecords() { flush(); }
    ViewRecords(const ViewRecords&) = delete;
    ViewRecords& operator=(const ViewRecords&) = delete;
    explicit operator bool() const { return m_out != nullptr; }

    void add(std::int64_t offset, std::int64_t sum) {
        if (m_used + kLongest > m_buffer.size()) flush();
        char* p = m_buffer.data() + m_used;
        char* const end = p + kLongest;
        *p++ = '"';
        p = std::to_chars(p, end, offset).ptr;
        *p++ = '"';
        *p++ = ',';
        *p++ = '"';
        p = std::to_chars(p, end, sum).ptr;
        *p++ = '"';
        *p++ = '\r';
        *p++ = '\n';
        m_used = static_cast<std::size_t>(p - m_buffer.data());
    }

private:
    void flush() {
        if (m_out && m_used > 0) m_out->write(m_buffer.data(), static_cast<std::streamsize>(m_used));
        m_used = 0;
    }

    static constexpr std::size_t kLongest = 2 * 20 + 8; // two 64-bit numbers, quotes, line end
    std::ostream* m_out;
    std::array<char, 1 << 16> m_buffer{};
    std::size_t m_used = 0;
};

int ByteAt(std::string_view bytes, std::int64_t position) {
    return static_cast<unsigned char>(bytes[static_cast<std::size_t>(position - 1)]);
}

// A marker where the signal falls below the band around silence after it was last above.
std::vector<MarkerRecord> ThresholdMarkers(std::string_view bytes, std::int64_t first,
                                           std::int64_t last, int cutOff, std::ostream* text) {
    std::vector<MarkerRecord> markers;
    MarkerRing ring(first, true);
    std::int64_t sum = 0;
    bool armed = false;
    ViewRecords view(text);
    for (std::int64_t p = first; p <= last; ++p) {
        const int x = ByteAt(bytes, p);
        sum += kSilence - x;
        if (std::llabs(sum) <= cutOff) sum = 0;
        if (view) view.add(p - first, sum);
        if (x > kSilence + cutOff) {
            armed = true;
        } else if (x < kSilence - cutOff && armed) {
            markers.push_back(ring.mark(p));
            armed = false;
        }
    }
    return markers;
}

// A marker on each crest above the running floor, at least the minimum gap apart.
std::vector<MarkerRecord> PeakMarkers(std::string_view bytes, std::int64_t first,
                                      std::int64_t last, int cutOff) {
    std::vector<MarkerRecord> markers;
    MarkerRing ring(first, false);
    double envelope = 0;
    for (std::int64_t p = first + 2; p <= last; ++p) {
        const int a = ByteAt(bytes, p - 2), b = ByteAt(bytes, p - 1), c = ByteAt(bytes, p);
        envelope = std::max<double>(std::abs(b - kSilence), envelope * kEnvelopeDecay);
        const double floor = std::max<double>(cutOff, kFloorShare * envelope);
        if (a <= b && c < b && b - kSilence > floor && (p - 1) - ring.last() > kPeakGap)
            markers.push_back(ring.mark(p - 1));
    }
    return markers;
}

} // namespace

std::vector<MarkerRecord> FindMarkers(std::string_view bytes, std::int64_t first,
                                      std::int64_t last, const PassOptions& options,
                                      std::ostream* view) {
    last = std::min<std::int64_t>(last, static_cast<std::int64_t>(bytes.size()));
    if (first < 1 || first > last) return {};
    switch (options.Method) {
    case Detector::Simple: return ThresholdMarkers(bytes, first, last, options.CutOff, view);
    case Detector::Women: return PeakMarkers(bytes, first, last, options.CutOff);
    case Detector::Men: break;
    }
    return {};
}

} // namespace tahrir::transcribe
