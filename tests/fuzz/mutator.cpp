#include "mutator.h"

#include <algorithm>
#include <random>

namespace fuzz {

namespace {

class Random {
 public:
  explicit Random(uint32_t seed) : engine_(seed) {}

  /// A number below `limit`, which is not 0.
  size_t below(size_t limit) { return engine_() % limit; }
  bool one_in(size_t cases) { return below(cases) == 0; }
  template <class Collection>
  auto &any_of(Collection &collection) {
    return collection[below(std::size(collection))];
  }

 private:
  std::mt19937 engine_;
};

/// Where a piece stands.
struct Place {
  Tree *siblings;
  size_t index;

  Piece &piece() const { return (*siblings)[index]; }
  Tree::iterator at() const { return siblings->begin() + static_cast<std::ptrdiff_t>(index); }
};

void find_places(Tree *tree, std::vector<Place> *places) {
  for (size_t i = 0; i < tree->size(); ++i) {
    places->push_back({tree, i});
    find_places(&(*tree)[i].parts, places);
  }
}

/// A place of the tree, which is not empty.
Place any_place(Tree *tree, Random *random) {
  std::vector<Place> places;
  find_places(tree, &places);
  return random->any_of(places);
}

const Piece &any_piece(const Tree &tree, Random *random) {
  std::vector<const Piece *> pieces;
  const auto find = [&pieces](const auto &self, const Tree &in) -> void {
    for (const Piece &piece : in) {
      pieces.push_back(&piece);
      self(self, piece.parts);
    }
  };
  find(find, tree);
  return *random->any_of(pieces);
}

/// Puts a piece in place of another, or beside it.
void graft(const Place &place, Piece foreign, Random *random) {
  if (random->one_in(2))
    place.piece() = std::move(foreign);
  else
    place.siblings->insert(place.at(), std::move(foreign));
}

/// A tree, which is not empty, and what can be done to it.
class Surgery {
 public:
  Surgery(Tree *tree, const Tree &samples, Mutator::Plain plain, size_t room, Random *random)
      : tree_(*tree), samples_(samples), plain_(plain), room_(room), random_(*random) {}

  void operate() {
    using Operation = void (Surgery::*)();
    static constexpr Operation operations[] = {
        &Surgery::remove,          &Surgery::repeat,        &Surgery::exchange, &Surgery::move,
        &Surgery::graft_a_sample,  &Surgery::graft_its_own, &Surgery::retag,    &Surgery::lengthen,
        &Surgery::make_indefinite, &Surgery::mislead,       &Surgery::wrap,     &Surgery::unwrap,
        &Surgery::rewrite,         &Surgery::rewrite};
    (this->*random_.any_of(operations))();
  }

 private:
  Place any() { return any_place(&tree_, &random_); }

  void remove() {
    const Place place = any();
    place.siblings->erase(place.at());
  }

  void repeat() {
    const Place place = any();
    const Piece copy = place.piece();
    place.siblings->insert(place.at(), 1 + random_.below(random_.one_in(8) ? 64 : 2), copy);
  }

  void exchange() {
    const Place place = any();
    std::swap(place.piece(), random_.any_of(*place.siblings));
  }

  void move() {
    const Place from = any();
    Piece piece = std::move(from.piece());
    from.siblings->erase(from.at());
    if (tree_.empty()) {
      tree_.push_back(std::move(piece));
      return;
    }
    const Place to = any();
    to.siblings->insert(to.at(), std::move(piece));
  }

  void graft_a_sample() { graft(any(), any_piece(samples_, &random_), &random_); }
  void graft_its_own() { graft(any(), Piece(any_piece(tree_, &random_)), &random_); }

  // Another tag of the tree, one of the universal types, the other form, or another number.
  void retag() {
    Piece &piece = any().piece();
    if (piece.form == Piece::Form::octets) piece.form = Piece::Form::definite;
    switch (random_.below(4)) {
      case 0:
        piece.tag = any_piece(tree_, &random_).tag;
        break;
      case 1:
        piece.tag = any_tag();
        break;
      case 2:
        piece.tag ^= constructed_bit;
        break;
      default:
        piece.tag = static_cast<uint8_t>((piece.tag & 0xE0) | random_.below(0x20));
    }
  }

  uint8_t any_tag() {
    static constexpr uint8_t tags[] = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x0A, 0x0C, 0x10,
                                       0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17, 0x18, 0x19,
                                       0x1A, 0x1B, 0x1C, 0x1E, 0x23, 0x24, 0x2C, 0x30, 0x31,
                                       0x80, 0x81, 0x82, 0xA0, 0xA1, 0xA2, 0xA3, 0xA4};
    return random_.any_of(tags);
  }

  // More length octets than are needed, or no more.
  void lengthen() {
    Piece &piece = any().piece();
    piece.length_octets = static_cast<uint8_t>(1 + random_.below(most_length_octets));
    piece.false_length.reset();
  }

  void make_indefinite() {
    Piece &piece = any().piece();
    if (piece.form == Piece::Form::octets) return;
    piece.form = Piece::Form::indefinite;
    if (random_.one_in(8)) return;
    Piece end_of_contents;
    end_of_contents.form = Piece::Form::definite;
    piece.parts.push_back(end_of_contents);
  }

  // A length that is wrong: by a little, or by so much that sums of it do not fit their type.
  void mislead() {
    static constexpr uint32_t nasty[] = {0,          0x7F,       0x80,       0xFF,
                                         0x7FFFFFFF, 0x80000000, 0xFFFFFFF0, 0xFFFFFFFF};
    Piece &piece = any().piece();
    if (random_.one_in(2)) {
      piece.false_length = random_.any_of(nasty);
      return;
    }
    const auto right =
        static_cast<uint32_t>(put_together(piece.parts).size() + piece.octets.size());
    piece.false_length = right + static_cast<uint32_t>(random_.below(17)) - 8;
  }

  void wrap() {
    Piece &piece = any().piece();
    for (size_t times = random_.one_in(16) ? 1 + random_.below(200) : 1; times != 0; --times) {
      Piece wrapper;
      wrapper.form = Piece::Form::definite;
      wrapper.tag = any_tag();
      wrapper.parts.push_back(std::move(piece));
      piece = std::move(wrapper);
    }
  }

  void unwrap() {
    const Place place = any();
    Tree parts = std::move(place.piece().parts);
    const auto behind = place.siblings->erase(place.at());
    place.siblings->insert(behind, std::make_move_iterator(parts.begin()),
                           std::make_move_iterator(parts.end()));
  }

  void rewrite() {
    Bytes &octets = any().piece().octets;
    const size_t size = octets.size();
    octets.resize(std::max(size, std::min(room_, size + 16)));
    octets.resize(plain_(octets.data(), size, octets.size()));
  }

  Tree &tree_;
  const Tree &samples_;
  Mutator::Plain plain_;
  size_t room_;
  Random &random_;
};

Bytes in_room(const Tree &tree, size_t room) {
  Bytes out = put_together(tree);
  if (out.size() > room) out.clear();
  return out;
}

}  // namespace

Mutator::Mutator(const std::vector<Bytes> &samples, Plain plain) : plain_(plain) {
  for (const Bytes &sample : samples) {
    const Tree tree = take_apart(sample);
    samples_.insert(samples_.end(), tree.begin(), tree.end());
  }
  if (samples_.empty()) samples_.emplace_back();
}

Bytes Mutator::changed(Octets input, size_t room, uint32_t seed) const {
  Random random(seed);
  Tree tree = take_apart(input);
  for (size_t changes = 1 + random.below(3); changes != 0; --changes) {
    if (tree.empty()) tree.push_back(any_piece(samples_, &random));
    Surgery(&tree, samples_, plain_, room, &random).operate();
  }
  return in_room(tree, room);
}

Bytes Mutator::crossed(Octets a, Octets b, size_t room, uint32_t seed) {
  Random random(seed);
  Tree tree = take_apart(a);
  const Tree other = take_apart(b);
  if (!tree.empty() && !other.empty())
    graft(any_place(&tree, &random), any_piece(other, &random), &random);
  return in_room(tree, room);
}

}  // namespace fuzz
