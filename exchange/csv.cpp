#include "exchange/csv.h"

#include <algorithm>

namespace lunara {

CsvReader::Result CsvReader::Next(CsvRow& row) {
    row.clear();
    if (!fault.reason.empty()) {
        return Result::Bad;
    }
    while (TakeLineEnd()) {
    }
    if (position == text.size()) {
        return Result::End;
    }
    for (CellEnd end = CellEnd::Comma; end != CellEnd::Line;) {
        row.emplace_back();
        end = TakeCell(row.back(), static_cast<int>(row.size()));
        if (end == CellEnd::Bad) {
            row.clear();
            return Result::Bad;
        }
    }
    return Result::Row;
}

CsvReader::CellEnd CsvReader::TakeCell(CsvCell& cell, int column) {
    cell.line = line;
    if (position < text.size() && text[position] == '"') {
        ++position;
        return TakeQuoted(cell, column);
    }
    return TakePlain(cell, column);
}

CsvReader::CellEnd CsvReader::TakeQuoted(CsvCell& cell, int column) {
    while (true) {
        const std::size_t quote = text.find('"', position);
        if (quote == std::string_view::npos) {
            return Refuse(cell.line, column, "the quote that begins here is never closed");
        }
        const std::string_view piece = text.substr(position, quote - position);
        cell.text.append(piece);
        line += static_cast<int>(std::count(piece.begin(), piece.end(), '\n'));
        position = quote + 1;
        if (position == text.size() || text[position] != '"') {
            return TakeEnd(column, "text behind a closing quote");
        }
        cell.text.push_back('"');
        ++position;
    }
}

CsvReader::CellEnd CsvReader::TakePlain(CsvCell& cell, int column) {
    const std::size_t end = std::min(text.find_first_of(",\"\r\n", position), text.size());
    cell.text.assign(text.substr(position, end - position));
    position = end;
    if (position < text.size() && text[position] == '"') {
        return Refuse(line, column, "a quote inside a cell that does not begin with one");
    }
    return TakeEnd(column, "a carriage return without a line feed");
}

CsvReader::CellEnd CsvReader::TakeEnd(int column, const char* otherwise) {
    if (position < text.size() && text[position] == ',') {
        ++position;
        return CellEnd::Comma;
    }
    if (position == text.size() || TakeLineEnd()) {
        return CellEnd::Line;
    }
    return Refuse(line, column, otherwise);
}

bool CsvReader::TakeLineEnd() {
    const std::string_view rest = text.substr(position, 2);
    if (rest.substr(0, 1) != "\n" && rest != "\r\n") {
        return false;
    }
    position += rest[0] == '\n' ? 1 : 2;
    ++line;
    return true;
}

CsvReader::CellEnd CsvReader::Refuse(int atLine, int column, const char* reason) {
    fault = {atLine, column, reason};
    return CellEnd::Bad;
}

std::string QuoteCsvCell(std::string_view cell) {
    if (cell.find_first_of(",\"\r\n") == std::string_view::npos) {
        return std::string(cell);
    }
    std::string quoted = "\"";
    for (const char character : cell) {
        quoted.append(character == '"' ? 2 : 1, character);
    }
    quoted.push_back('"');
    return quoted;
}

}  // namespace lunara
