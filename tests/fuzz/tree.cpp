#include "tree.h"

#include <algorithm>

namespace fuzz {

namespace {

constexpr uint8_t bit_string = 3, octet_string = 4, sequence = 0x10, set = 0x11;

uint8_t shortest_length_octets(uint32_t length) {
  if (length <= largest_short_length) return 1;
  uint8_t octets = 1;
  for (; length != 0; length >>= 8) ++octets;
  return octets;
}

/// Octets that get fewer from the front.
class Rest {
 public:
  explicit Rest(Octets octets) : octets_(octets) {}

  bool empty() const { return octets_.empty(); }
  Octets all() const { return octets_; }
  bool starts_with_end_of_contents() const {
    return octets_.size() >= 2 && octets_[0] == 0 && octets_[1] == 0;
  }

  Octets take(size_t count) {
    const Octets taken = octets_.first(std::min(count, octets_.size()));
    octets_ = octets_.subspan(taken.size());
    return taken;
  }

  /// Takes the header of an element and gives its length, which is 0 where it is indefinite.
  /// Nothing is taken where there is no header.
  std::optional<uint32_t> take_header(Piece *piece) {
    if (octets_.size() < 2) return std::nullopt;
    const uint8_t first = octets_[1];
    uint32_t length = first;
    piece->form = Piece::Form::definite;
    piece->length_octets = 1;
    if (first > largest_short_length) {
      const size_t octets = first & largest_short_length;
      if (octets >= most_length_octets || octets > octets_.size() - 2) return std::nullopt;
      if (octets == 0) piece->form = Piece::Form::indefinite;
      piece->length_octets = static_cast<uint8_t>(1 + octets);
      length = 0;
      for (const uint8_t octet : octets_.subspan(2, octets)) length = length << 8 | octet;
    }
    piece->tag = octets_[0];
    octets_ = octets_.subspan(1U + piece->length_octets);
    return length;
  }

 private:
  Octets octets_;
};

bool is_whole(const Piece &piece) {
  return piece.form != Piece::Form::octets && !piece.false_length;
}

Piece take_piece(Rest *rest);

void look_into(Piece *piece, Octets content) {
  piece->octets.assign(content.begin(), content.end());
  const bool constructed =
      (piece->tag & constructed_bit) != 0 || piece->tag == sequence || piece->tag == set;
  const size_t in_front = piece->tag == bit_string ? 1 : 0;
  if (!constructed && piece->tag != bit_string && piece->tag != octet_string) return;
  if (content.size() <= in_front) return;
  Tree parts = take_apart(content.subspan(in_front));
  if (!constructed && !std::ranges::all_of(parts, is_whole)) return;
  piece->octets.resize(in_front);
  piece->parts = std::move(parts);
}

Piece take_piece(Rest *rest) {
  Piece piece;
  const std::optional<uint32_t> length = rest->take_header(&piece);
  if (!length) {
    const Octets octets = rest->take(rest->all().size());
    piece.form = Piece::Form::octets;
    piece.length_octets = 1;
    piece.octets.assign(octets.begin(), octets.end());
    return piece;
  }
  if (piece.form == Piece::Form::definite) {
    const Octets content = rest->take(*length);
    if (content.size() != *length) piece.false_length = *length;
    look_into(&piece, content);
    return piece;
  }
  for (bool closed = false; !closed && !rest->empty();) {
    closed = rest->starts_with_end_of_contents();
    piece.parts.push_back(take_piece(rest));
  }
  return piece;
}

// What is inside comes first, so that its size is known: all octets are written back to front.
void write_backwards(const Tree &tree, Bytes *out) {
  for (auto piece = tree.rbegin(); piece != tree.rend(); ++piece) {
    const size_t before = out->size();
    write_backwards(piece->parts, out);
    out->insert(out->end(), piece->octets.rbegin(), piece->octets.rend());
    if (piece->form == Piece::Form::octets) continue;
    if (piece->form == Piece::Form::indefinite) {
      out->push_back(largest_short_length + 1);
    } else {
      const uint32_t length =
          piece->false_length.value_or(static_cast<uint32_t>(out->size() - before));
      const uint8_t octets = std::max(piece->length_octets, shortest_length_octets(length));
      for (int i = 0; i < octets - 1; ++i) out->push_back(static_cast<uint8_t>(length >> (8 * i)));
      out->push_back(static_cast<uint8_t>(octets == 1 ? length : 0x80U | (octets - 1U)));
    }
    out->push_back(piece->tag);
  }
}

}  // namespace

Tree take_apart(Octets input) {
  Tree tree;
  for (Rest rest(input); !rest.empty();) tree.push_back(take_piece(&rest));
  return tree;
}

Bytes put_together(const Tree &tree) {
  Bytes out;
  write_backwards(tree, &out);
  std::ranges::reverse(out);
  return out;
}

}  // namespace fuzz
