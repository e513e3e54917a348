#include "text/ascii_scan.h"

#include <algorithm>
#include <cwchar>

#include "text/code_points.h"

// The vectors take letters of four bytes. With two, their packed compares would take units above U+7FFF for ASCII.
#if defined(__GNUC__) && defined(__x86_64__) && WCHAR_MAX > 0xFFFF
#include <immintrin.h>
#define KVD_SCAN_AVX2 1
#endif

namespace text {
namespace {

bool isQuiet(wchar_t c) { return codeOf(c) < 0x80 && c != L'$' && c != L'%' && c != L'@'; }

bool scanned(std::wstring_view text) { return std::all_of(text.begin(), text.end(), isQuiet); }

#ifdef KVD_SCAN_AVX2
constexpr std::size_t kVector = 8, kBlock = 64;

[[gnu::target("avx2")]] inline __m256i vectorAt(const wchar_t* at) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i_u*>(at));
}

// Thirty-two characters, one a byte; those above 0x7F have its highest bit set. (Negative ones, which no text holds,
// become 0.)
[[gnu::target("avx2")]] inline __m256i narrowed(const wchar_t* at) {
  return _mm256_packus_epi16(_mm256_packs_epi32(vectorAt(at), vectorAt(at + kVector)),
                             _mm256_packs_epi32(vectorAt(at + 2 * kVector), vectorAt(at + 3 * kVector)));
}

// Bytes whose highest bit is set where one isn't quiet: a mark is found by the byte that its low half chooses.
[[gnu::target("avx2")]] inline __m256i loudBytes(__m256i bytes) {
  const __m256i marks =
      _mm256_broadcastsi128_si256(_mm_setr_epi8('@', -1, -1, -1, '$', '%', -1, -1, -1, -1, -1, -1, -1, -1, -1, -1));
  return _mm256_or_si256(bytes, _mm256_cmpeq_epi8(bytes, _mm256_shuffle_epi8(marks, bytes)));
}

[[gnu::target("avx2")]] inline bool isLoud(const wchar_t* eight) {
  const __m256i v = vectorAt(eight);
  const __m256i isMoney = _mm256_cmpeq_epi32(_mm256_and_si256(v, _mm256_set1_epi32(~1)), _mm256_set1_epi32('$'));
  const __m256i isAt = _mm256_cmpeq_epi32(v, _mm256_set1_epi32('@'));
  const __m256i isWide = _mm256_cmpgt_epi32(v, _mm256_set1_epi32(0x7F));
  return _mm256_movemask_epi8(_mm256_or_si256(_mm256_or_si256(isMoney, isAt), _mm256_or_si256(isWide, v))) != 0;
}

[[gnu::target("avx2")]] bool scannedByVectors(std::wstring_view text) {
  if (text.size() < kVector) return scanned(text);
  const wchar_t* const begin = text.data();
  std::size_t at = 0;
  for (; at + kBlock <= text.size(); at += kBlock) {
    const __m256i loud = _mm256_or_si256(loudBytes(narrowed(begin + at)), loudBytes(narrowed(begin + at + kBlock / 2)));
    if (_mm256_movemask_epi8(loud) != 0) return false;
  }
  for (; at + kVector <= text.size(); at += kVector)
    if (isLoud(begin + at)) return false;
  return at == text.size() || !isLoud(begin + text.size() - kVector);
}
#endif

}  // namespace

bool isAsciiWithoutMarks(std::wstring_view text) {
#ifdef KVD_SCAN_AVX2
  if (__builtin_cpu_supports("avx2")) return scannedByVectors(text);
#endif
  return scanned(text);
}

}  // namespace text
