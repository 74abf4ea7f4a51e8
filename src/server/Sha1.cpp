#include "server/Sha1.h"

#include <bit>
#include <string>

namespace zelUtilities {

namespace {

using State = std::array<std::uint32_t, 5>;
constexpr std::size_t blockSize = 64;  // bytes

std::uint32_t bigEndian(std::string_view bytes) {
  std::uint32_t word = 0;
  for (const char byte : bytes.substr(0, 4)) word = word << 8 | static_cast<std::uint8_t>(byte);
  return word;
}

std::array<std::uint32_t, 80> scheduleOf(std::string_view block) {
  std::array<std::uint32_t, 80> words;
  for (std::size_t i = 0; i < 16; ++i) words[i] = bigEndian(block.substr(4 * i));
  for (std::size_t i = 16; i < 80; ++i)
    words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);
  return words;
}

// The function and the constant of a round.
std::uint32_t mixed(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
  if (round < 20) return ((b & c) | (~b & d)) + 0x5A827999;
  if (round < 40) return (b ^ c ^ d) + 0x6ED9EBA1;
  if (round < 60) return ((b & c) | (b & d) | (c & d)) + 0x8F1BBCDC;
  return (b ^ c ^ d) + 0xCA62C1D6;
}

void addBlock(State& state, std::string_view block) {
  const std::array<std::uint32_t, 80> words = scheduleOf(block);
  auto [a, b, c, d, e] = state;
  for (std::size_t round = 0; round < 80; ++round) {
    const std::uint32_t next = std::rotl(a, 5) + mixed(round, b, c, d) + e + words[round];
    e = d;
    d = c;
    c = std::rotl(b, 30);
    b = a;
    a = next;
  }
  state = {state[0] + a, state[1] + b, state[2] + c, state[3] + d, state[4] + e};
}

// A one bit, zeros, and the length in bits as the last eight bytes of a block.
std::string padded(std::string_view bytes) {
  std::string message(bytes);
  message += '\x80';
  while (message.size() % blockSize != blockSize - 8) message += '\0';
  const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
  for (int shift = 56; shift >= 0; shift -= 8) message += static_cast<char>(bits >> shift & 0xFF);
  return message;
}

}  // namespace

std::array<std::uint8_t, 20> sha1(std::string_view bytes) {
  State state = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};
  const std::string message = padded(bytes);
  for (std::size_t at = 0; at < message.size(); at += blockSize)
    addBlock(state, std::string_view(message).substr(at, blockSize));

  std::array<std::uint8_t, 20> digest;
  for (std::size_t i = 0; i < digest.size(); ++i)
    digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
  return digest;
}

}  // namespace zelUtilities
