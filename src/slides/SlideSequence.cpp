#include "slides/SlideSequence.h"

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int kPage = 5; // pictures that a page key steps

} // namespace

SlideSequence::SlideSequence(int count, int start) : m_count(count), m_index(Wrapped(start)) {}

int SlideSequence::Wrapped(int index) const {
    const int rest = index % m_count;
    return rest < 0 ? rest + m_count : rest;
}

bool SlideSequence::PassOver() {
    m_index = Wrapped(m_index + (m_back ? -1 : 1));
    return ++m_passedOver < m_count;
}

void SlideSequence::Leave(SlideMove move, bool back) {
    m_back = back; // also which way is looked when the picture cannot be shown again
    if (move != SlideMove::Again) {
        m_travelsBack = move == SlideMove::Previous;
        const bool steps = move == SlideMove::Next || move == SlideMove::Previous;
        if (std::exchange(m_again, false) && steps) return;
    }
    switch (move) {
    case SlideMove::Next:
        m_index = Wrapped(m_index + 1);
        break;
    case SlideMove::Previous:
        m_index = Wrapped(m_index - 1);
        break;
    case SlideMove::Again:
        break;
    case SlideMove::First:
        m_index = 0;
        break;
    case SlideMove::Last:
        m_index = m_count - 1;
        break;
    case SlideMove::PageBack:
        m_index = Wrapped(m_index - kPage);
        break;
    case SlideMove::PageOn:
        m_index = Wrapped(m_index + kPage);
        break;
    }
}

void SlideSequence::GoTo(int index) {
    m_again = false;
    m_back = false;
    m_index = Wrapped(index);
}

bool SlideSequence::Resize(int count) {
    if (count < 1) return false;
    m_count = count;
    m_index = Wrapped(m_index);
    return true;
}

std::vector<int> SlideSequence::Expected() const {
    const int ahead = m_travelsBack ? -1 : 1;
    std::vector<int> indexes;
    for (const int offset : {ahead, 2 * ahead, -ahead}) {
        const int index = Wrapped(m_index + offset);
        const bool known = std::find(indexes.begin(), indexes.end(), index) != indexes.end();
        if (index != m_index && !known) indexes.push_back(index);
    }
    return indexes;
}

} // namespace tarn
