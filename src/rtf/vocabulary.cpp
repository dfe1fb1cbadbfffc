#include "rtf/vocabulary.h"

#include <array>
#include <cstddef>
#include <vector>

#include "rtf/border_words.h"
#include "rtf/numbering_words.h"
#include "rtf/paragraph_words.h"
#include "rtf/table_words.h"
#include "rtf/word_list.h"

namespace tolva::rtf {

namespace {

/// All words in an open hash table, built once.
class Vocabulary {
  public:
    Vocabulary() {
        add_indexes(Topic::character, character_words());
        add_indexes(Topic::paragraph, paragraph_words());
        add_indexes(Topic::paragraph_border, paragraph_border_words());
        add_indexes(Topic::border, border_words());
        add_indexes(Topic::table, table_words());
        add_indexes(Topic::table_border, table_border_words());
        add_indexes(Topic::numbering, numbering_words());
        for (const Word& word : meant_words())
            add(word);
        add_names(Topic::document_word, kept_document_words());
        add_names(Topic::section_word, kept_section_words());
        add_names(Topic::silent, silent_words());
    }

    const Word* find(std::string_view name) const {
        for (std::size_t place = hash(name);; ++place) {
            const Word& word = words_[place % size];
            if (word.name == name)
                return &word;
            if (word.name.empty())
                return nullptr;
        }
    }

  private:
    static constexpr std::size_t size = 4096;

    static std::size_t hash(std::string_view name) {
        std::uint32_t value = 2166136261u;
        for (const char character : name)
            value = (value ^ static_cast<unsigned char>(character)) * 16777619u;
        return (value ^ value >> 15) % size;
    }

    void add(const Word& word) {
        std::size_t place = hash(word.name);
        while (!words_[place % size].name.empty()) {
            if (words_[place % size].name == word.name)
                return;
            ++place;
        }
        words_[place % size] = word;
    }

    template <class Words>
    void add_indexes(Topic topic, const Words& list) {
        for (std::size_t index = 0; index < list.size(); ++index)
            add({list[index].name, topic, static_cast<std::int32_t>(index)});
    }

    void add_names(Topic topic, std::span<const std::string_view> names) {
        for (const std::string_view name : names)
            add({name, topic, 0});
    }

    std::array<Word, size> words_;
};

} // namespace

const Word* find_word(std::string_view name) {
    static const Vocabulary vocabulary;
    return vocabulary.find(name);
}

} // namespace tolva::rtf
