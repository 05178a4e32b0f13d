// SPDX-License-Identifier: MIT
#include "tests/items/WorstHeaders.h"

#include <QSize>

#include <numeric>

namespace lumi::test {

namespace {

enum class Coding {
    Baseline = 0xC0,
    Progressive = 0xC2,
    Arithmetic = 0xC9,
    ArithmeticProgressive = 0xCA
};

/// The header values of a scan.
struct Band
{
    int first;
    int last;
    int highBit;
    int lowBit;
};

constexpr Band kWhole{0, 63, 0, 0};
constexpr int kMostDcBits = 13;
constexpr int kLongestRun = 32767;

/// Sampling factors of each component, as in the file.
using Components = std::vector<int>;

const Components kGray{0x11};
const Components kFullColour{0x11, 0x11, 0x11};
const Components kUsualColour{0x22, 0x11, 0x11};
const Components kFour{0x11, 0x11, 0x11, 0x11};

class Photo
{
public:
    Photo(QSize size, const Components &components, Coding coding, int restartInterval = 0);

    /// A scan of these components, with this data.
    void scan(const std::vector<int> &components, Band band, const QByteArray &data = {});
    void scanOfAll(Band band);
    /// Component by component, scans of empty blocks, each of which is looked at whole.
    void emptyBands(int scans);
    /// The first values of all blocks, bit by bit.
    void dcBits(int scans);

    [[nodiscard]] QByteArray bytes() const { return m_bytes + "\xFF\xD9"; }

private:
    void word(int value) { m_bytes.append(char(value >> 8)).append(char(value)); }

    void byte(int value) { m_bytes.append(char(value)); }

    void marker(int code, int length);
    void addTables();

    QByteArray m_bytes{"\xFF\xD8"};
    QSize m_size;
    int m_components;
    bool m_isArithmetic;
};

Photo::Photo(QSize size, const Components &components, Coding coding, int restartInterval)
    : m_size(size)
    , m_components(int(components.size()))
    , m_isArithmetic(coding == Coding::Arithmetic || coding == Coding::ArithmeticProgressive)
{
    addTables();
    marker(int(coding), 8 + 3 * m_components);
    byte(8);
    word(size.height());
    word(size.width());
    byte(m_components);
    for (int i = 0; i < m_components; ++i) {
        byte(i + 1);
        byte(components[static_cast<std::size_t>(i)]);
        byte(0);
    }
    if (restartInterval > 0) {
        marker(0xDD, 4);
        word(restartInterval);
    }
}

void Photo::marker(int code, int length)
{
    byte(0xFF);
    byte(code);
    word(length);
}

void Photo::addTables()
{
    constexpr int kCodeLengths = 16;
    marker(0xDB, 67);
    byte(0);
    m_bytes.append(QByteArray(64, 1));
    if (m_isArithmetic) {
        return;
    }
    // The code 0 is "no change" or "the block ends", 10 a run of at least 16384 empty blocks.
    const QByteArray symbols[] = {QByteArray(1, 0), QByteArray("\0\xE0", 2)};
    for (int table = 0; table < 2; ++table) {
        marker(0xC4, 3 + kCodeLengths + int(symbols[table].size()));
        byte(table << 4);
        for (int length = 1; length <= kCodeLengths; ++length) {
            byte(length <= symbols[table].size() ? 1 : 0);
        }
        m_bytes.append(symbols[table]);
    }
}

void Photo::scan(const std::vector<int> &components, Band band, const QByteArray &data)
{
    const int count = int(components.size());
    marker(0xDA, 6 + 2 * count);
    byte(count);
    for (const int component : components) {
        byte(component + 1);
        byte(0);
    }
    byte(band.first);
    byte(band.last);
    byte(band.highBit << 4 | band.lowBit);
    m_bytes.append(data);
}

void Photo::scanOfAll(Band band)
{
    std::vector<int> all(static_cast<std::size_t>(m_components));
    std::iota(all.begin(), all.end(), 0);
    scan(all, band);
}

void Photo::emptyBands(int scans)
{
    const int blocks = ((m_size.width() + 7) / 8) * ((m_size.height() + 7) / 8);
    const QByteArray runs = QByteArray("\xBF\xFF\0", 3).repeated(blocks / kLongestRun + 1);
    for (int i = 0; i < scans; ++i) {
        const Band band = i < m_components ? Band{1, 63, 0, 1} : Band{1, 63, 1, 0};
        scan({i % m_components}, band, m_isArithmetic ? QByteArray() : runs);
    }
}

void Photo::dcBits(int scans)
{
    for (int i = 0; i < scans; ++i) {
        const int low = std::max(0, kMostDcBits - i);
        scanOfAll({0, 0, i == 0 ? 0 : low + 1, low});
    }
}

/// Pictures too large for any memory.
void addHuge(std::vector<HostileFile> *all)
{
    const std::pair<const char *, Components> kinds[]
        = {{"gray", kGray}, {"three components", kFullColour}, {"four components", kFour}};
    constexpr QSize kLargest(65500, 65500);
    for (const auto &[name, components] : kinds) {
        const QByteArray says = QByteArray("65500 x 65500, ") + name;
        for (const Coding coding : {Coding::Baseline, Coding::Arithmetic}) {
            Photo photo(kLargest, components, coding, 1);
            photo.scanOfAll(kWhole);
            all->push_back(
                {says + (coding == Coding::Baseline ? "" : ", arithmetic"), photo.bytes()});
        }
        for (const Coding coding : {Coding::Progressive, Coding::ArithmeticProgressive}) {
            Photo photo(kLargest, components, coding);
            photo.dcBits(3);
            all->push_back({says
                                + (coding == Coding::Progressive ? ", progressive"
                                                                 : ", arithmetic progressive"),
                            photo.bytes()});
        }
    }
    Photo scans(kLargest, kFullColour, Coding::Baseline);
    for (int i = 0; i < 3; ++i) {
        scans.scan({i}, kWhole);
    }
    all->push_back({"65500 x 65500, a scan for each component", scans.bytes()});
    Photo known(QSize(49157, 27397), kFullColour, Coding::Progressive);
    known.dcBits(1);
    known.emptyBands(6);
    all->push_back({"49157 x 27397, progressive", known.bytes()});
    all->push_back({"65500 x 65500, 500 scans", emptyScans(65500, 65500, 500)});
}

/// Pictures of several scans just below the memory limit of a thumbnail.
void addLargestHeld(std::vector<HostileFile> *all)
{
    struct Kind
    {
        const char *name;
        QSize size;
        Components components;
    };

    const Kind kinds[] = {{"gray", {8192, 6144}, kGray},
                          {"three components", {4096, 4096}, kFullColour},
                          {"usual sampling", {8192, 4096}, kUsualColour},
                          {"four components", {4096, 3072}, kFour}};
    for (const auto &[name, size, components] : kinds) {
        const QByteArray says = QByteArray("the most memory, ") + name;
        Photo coarse(size, components, Coding::Progressive);
        coarse.dcBits(1);
        all->push_back({says + ", only its coarsest scan", coarse.bytes()});
        Photo bands(size, components, Coding::Progressive);
        bands.dcBits(1);
        bands.emptyBands(499);
        all->push_back({says + ", 500 scans of empty blocks", bands.bytes()});
        Photo bits(size, components, Coding::Progressive, 1);
        bits.dcBits(500);
        all->push_back({says + ", 500 scans with restarts", bits.bytes()});
        Photo arithmetic(size, components, Coding::ArithmeticProgressive, 1);
        arithmetic.dcBits(1);
        arithmetic.emptyBands(499);
        all->push_back({says + ", 500 arithmetic scans", arithmetic.bytes()});
        Photo sequential(size, components, Coding::Baseline, 1);
        for (int i = 0; i < 500; ++i) {
            sequential.scan({i % int(components.size())}, kWhole);
        }
        all->push_back({says + ", 500 sequential scans", sequential.bytes()});
    }
}

/// Pictures of one scan just below the block limit of a thumbnail.
void addLargestRead(std::vector<HostileFile> *all)
{
    struct Kind
    {
        const char *name;
        QSize size;
        Components components;
    };

    const Kind kinds[] = {{"gray", {17376, 17376}, kGray},
                          {"three components", {10032, 10032}, kFullColour},
                          {"usual sampling", {14176, 14176}, kUsualColour},
                          {"four components", {8680, 8680}, kFour}};
    constexpr int kArithmeticPart = 3; // less than the root of its cost
    for (const auto &[name, size, components] : kinds) {
        const QByteArray says = QByteArray("the most blocks, ") + name;
        Photo baseline(size, components, Coding::Baseline, 1);
        baseline.scanOfAll(kWhole);
        all->push_back({says, baseline.bytes()});
        Photo refused(size, components, Coding::Arithmetic, 1);
        refused.scanOfAll(kWhole);
        all->push_back({says + ", arithmetic", refused.bytes()});
        Photo arithmetic(size / kArithmeticPart, components, Coding::Arithmetic, 1);
        arithmetic.scanOfAll(kWhole);
        all->push_back({says + " of an arithmetic picture", arithmetic.bytes()});
    }
}

/// Small ones, which are also mailed whole or embedded in another photo.
void addSmall(std::vector<HostileFile> *all)
{
    for (const QSize size :
         {QSize(65500, 1), QSize(1, 65500), QSize(640, 480), QSize(2048, 1024)}) {
        const QByteArray says
            = QByteArray::number(size.width()) + " x " + QByteArray::number(size.height());
        Photo many(size, kGray, Coding::Progressive);
        many.dcBits(1);
        many.emptyBands(499);
        all->push_back({says + ", 500 scans", many.bytes()});
        Photo bands(size, kGray, Coding::Progressive);
        bands.dcBits(1);
        bands.emptyBands(99);
        all->push_back({says + ", 100 scans", bands.bytes()});
        Photo bits(size, kFour, Coding::Progressive, 1);
        bits.dcBits(100);
        all->push_back({says + ", 100 scans of four components", bits.bytes()});
        Photo arithmetic(size, kGray, Coding::ArithmeticProgressive, 1);
        arithmetic.dcBits(1);
        arithmetic.emptyBands(99);
        all->push_back({says + ", 100 arithmetic scans", arithmetic.bytes()});
    }
}

void addOddities(std::vector<HostileFile> *all)
{
    Photo ten(QSize(4096, 4096), Components(10, 0x11), Coding::Progressive);
    ten.scan({0, 1, 2, 3}, {0, 0, 0, 0});
    all->push_back({"ten components", ten.bytes()});
    Photo column(QSize(1, 65500), {0x44, 0x44, 0x44, 0x44}, Coding::Progressive);
    column.emptyBands(499);
    all->push_back({"1 x 65500, four components sampled 4 x 4", column.bytes()});
}

} // namespace

QByteArray emptyScans(int width, int height, int scans)
{
    Photo photo(QSize(width, height), kGray, Coding::Progressive);
    photo.dcBits(1);
    for (int i = 1; i < scans; ++i) {
        photo.scan({0}, {1, 63, 0, 0});
    }
    return photo.bytes();
}

std::vector<HostileFile> worstHeaders()
{
    std::vector<HostileFile> all;
    addHuge(&all);
    addLargestHeld(&all);
    addLargestRead(&all);
    addSmall(&all);
    addOddities(&all);
    return all;
}

} // namespace lumi::test
