#include "ptx/readers/step/p21/Scan.h"

#include "ptx/readers/step/p21/Lexis.h"
#include "ptx/readers/step/p21/RecordScanner.h"

#include <algorithm>
#include <thread>

namespace ptx::step::p21
{

namespace
{

// Offsets in a piece have 32 bits.
constexpr std::uint64_t LargestShare = std::uint64_t{1} << 30;

// Of usual files, a little low: to grow a large table costs more than to write it.
constexpr std::size_t BytesPerParameter = 11;
constexpr std::size_t BytesPerRecord = 30;

/// What a thread reads, from where it guesses that a record begins to where the next thread does.
struct Share {
    Place from;
    std::uint64_t stop = 0;
    Piece piece;
    Place end;
    bool sawEnd = false;

    void read(std::string_view text)
    {
        piece = Piece();
        // The record before may have ended behind all of it.
        const auto size = static_cast<std::size_t>(std::max(stop, from.at) - from.at);
        piece.parameters.reserve(size / BytesPerParameter);
        piece.records.reserve(size / BytesPerRecord);
        RecordScanner scanner(text, from, piece);
        end = scanner.scanTo(stop);
        sawEnd = scanner.sawEnd();
    }
};

std::vector<Share> sharesOf(std::string_view text, const Place& begin, unsigned threads, std::uint64_t leastShare)
{
    const std::uint64_t size = text.size() - begin.at;
    const std::uint64_t count =
        std::max(std::clamp<std::uint64_t>(size / leastShare, 1, threads), (size + LargestShare - 1) / LargestShare);
    std::vector<Share> shares(1);
    shares[0].from = begin;
    for (std::uint64_t i = 1; i < count; ++i) {
        const std::uint64_t guess = nextStart(text, begin.at + size / count * i);
        if (guess == text.size() || guess <= shares.back().from.at)
            continue;
        shares.back().stop = guess;
        shares.emplace_back().from = {guess, Section::Data, {}};
    }
    shares.back().stop = text.size();
    return shares;
}

void readAtOnce(std::vector<Share>& shares, std::string_view text, unsigned threads)
{
    std::vector<std::thread> helpers;
    const auto readEach = [&](std::size_t first) {
        for (std::size_t i = first; i < shares.size(); i += threads)
            shares[i].read(text);
    };
    for (unsigned i = 1; i < std::min<std::size_t>(threads, shares.size()); ++i)
        helpers.emplace_back(readEach, i);
    readEach(0);
    for (std::thread& helper : helpers)
        helper.join();
}

} // namespace

Records scan(std::string_view text, unsigned threads, std::uint64_t leastShare)
{
    Records records;
    Piece& header = records.pieces.emplace_back();
    RecordScanner scanner(text, {}, header);
    Place place = scanner.scanToData();
    records.isComplete = scanner.sawEnd();
    std::vector<Share> shares = sharesOf(text, place, std::max(1u, threads), leastShare);
    readAtOnce(shares, text, std::max(1u, threads));
    for (Share& share : shares) {
        if (place.section == Section::Ended)
            break;
        // A guess that lay in a string, in a comment or between sections: what came of it is not what is there.
        if (share.from != place) {
            share.from = place;
            share.read(text);
        }
        place = share.end;
        records.isComplete = share.sawEnd;
        records.pieces.push_back(std::move(share.piece));
    }
    return records;
}

} // namespace ptx::step::p21
