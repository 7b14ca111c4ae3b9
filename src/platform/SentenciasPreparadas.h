#pragma once

namespace korven {

// While one lives, statements with bound parameters are prepared once per connection and SQL
// text and reused (a run that saves thousands of lines repeats the same few statements). Outside
// of one every statement is prepared afresh, as always.
class SentenciasPreparadas {
public:
    SentenciasPreparadas();
    ~SentenciasPreparadas();
    SentenciasPreparadas(const SentenciasPreparadas&) = delete;
    SentenciasPreparadas& operator=(const SentenciasPreparadas&) = delete;
};

} // namespace korven
