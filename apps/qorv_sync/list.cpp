#include <algorithm>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <tuple>
#include <vector>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "apps/qorv_sync/items.h"
#include "desktop/item_reader.h"

namespace qorv_sync {

namespace {

struct Row {
  std::uint32_t oid;
  std::vector<std::string> cells;
};

/// Terminals show one character for each code point of most texts.
std::size_t widthOf(const std::string& utf8) {
  return static_cast<std::size_t>(std::count_if(
      utf8.begin(), utf8.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

/// The width of each column but the last, which nothing follows.
std::vector<std::size_t> widthsOf(const std::vector<Row>& rows, std::span<const char* const> columns) {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i + 1 < columns.size(); ++i) {
    widths.push_back(widthOf(columns[i]));
    for (const Row& row : rows) widths[i] = std::max(widths[i], widthOf(row.cells[i]));
  }
  return widths;
}

template <typename Cells>
void sayRow(Report& report, const std::string& oid, const Cells& cells,
            const std::vector<std::size_t>& widths) {
  char begin[16];
  std::snprintf(begin, sizeof begin, "%10s", oid.c_str());
  std::string line = begin;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = cells[i];
    line += "  " + cell;
    if (i < widths.size()) line.append(widths[i] - widthOf(cell), ' ');
  }
  report.say(line);
}

void sayList(Report& report, const desktop::ItemKind& kind, std::vector<Row>& rows) {
  std::sort(rows.begin(), rows.end(), [](const Row& left, const Row& right) {
    return std::tie(left.cells.front(), left.oid) < std::tie(right.cells.front(), right.oid);
  });
  const std::vector<std::size_t> widths = widthsOf(rows, kind.columns);
  if (!rows.empty()) sayRow(report, "OID", kind.columns, widths);
  for (const Row& row : rows) sayRow(report, std::to_string(row.oid), row.cells, widths);
  report.say(std::to_string(rows.size()) + " " + (rows.size() == 1 ? kind.singular : kind.plural));
}

void listItems(Run& run, const std::string& typeName) {
  const desktop::ItemKind& kind = kindNamed(typeName);
  desktop::Session& session = run.connect();
  const std::vector<std::uint32_t> oids = desktop::listItems(session, kind.type);
  std::vector<Row> rows;
  nlohmann::json& listed = run.report.data()[kind.name] = nlohmann::json::array();
  readItems(
      run, session, kind, oids, desktop::FilesWanted::No, [&](const desktop::Item& item, std::uint32_t oid) {
        listed.push_back(kind.toJson(item));
        rows.push_back({oid, kind.cells(item)});
        run.report.progress("reading " + std::to_string(rows.size()) + " of " + std::to_string(oids.size()));
      });
  sayList(run.report, kind, rows);
}

}  // namespace

Action defineList(CLI::App& command) {
  const auto type = std::make_shared<std::string>();
  command.add_option("TYPE", *type, spellKinds())->required();
  return [type](Run& run) { listItems(run, *type); };
}

}  // namespace qorv_sync
