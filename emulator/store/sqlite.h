// One SQLite file: an owning connection whose statements are prepared once, and cursors that give them back.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <variant>
#include <vector>

namespace emulator {

/// What went wrong with a device file, in one line that begins with the file's name.
class StoreError : public std::runtime_error {
 public:
  StoreError(const std::string& file, const std::string& reason) : std::runtime_error(file + ": " + reason) {}
};

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// One use of a prepared statement. When the cursor goes, the statement is reset, forgets its parameters and
/// is ready for the next use. A cursor must not outlive its connection.
class Cursor {
 public:
  Cursor(Cursor&& other) noexcept = default;
  Cursor& operator=(Cursor&&) = delete;
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;
  ~Cursor();

  /// Moves to the next row; false when there is none left. Throws StoreError.
  bool next();

  /// A column of the current row, counted from 0. Integers, enumerations, double, std::u16string, std::string
  /// (UTF-8), Bytes, ByteView (valid until the next move), or std::optional of these for columns that may be
  /// null.
  template <typename T>
  T get(int column) const;
  bool isNull(int column) const;

 private:
  friend class Connection;
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

  Cursor(Statement statement, std::vector<Statement>& idle, const std::string& file)
      : statement_(std::move(statement)), idle_(&idle), file_(&file) {}

  template <typename T>
  void bindNext(int& index, const T& value);
  template <typename T>
  void bind(int index, const T& value);
  void bindInteger(int index, std::int64_t value);
  void bindReal(int index, double value);
  void bindText(int index, std::u16string_view value);
  void bindText(int index, std::string_view value);
  void bindBlob(int index, ByteView value);
  void check(int result) const;

  std::int64_t integer(int column) const;
  double real(int column) const;
  std::u16string text(int column) const;
  std::string utf8(int column) const;
  ByteView blob(int column) const;

  Statement statement_;
  std::vector<Statement>* idle_;  ///< Where the statement waits for its next use.
  const std::string* file_;
};

/// An open SQLite file. The first statement that writes begins a transaction, which lasts until commit or
/// rollback.
class Connection {
 public:
  /// Opens a file that exists. `name` is what messages call it. Throws StoreError.
  Connection(const std::string& path, std::string name);

  /// The rows of a statement whose parameters are given in order: integers, enumerations, double, UTF-16 or
  /// UTF-8 text, bytes, nullptr, or std::optional or std::variant of these; a span of variants stands for as
  /// many parameters. Texts and bytes are copied.
  template <typename... Values>
  Cursor query(std::string_view sql, const Values&... values);

  /// Executes a statement that has no rows, or whose rows are of no interest.
  template <typename... Values>
  void run(std::string_view sql, const Values&... values);

  /// Executes statements without parameters outside any cache: schema and pragmas. Begins no transaction.
  void execute(const char* sql);

  /// Makes the changes since the last commit permanent. Without changes nothing happens.
  void commit();
  /// Undoes the changes since the last commit.
  void rollback();
  bool inTransaction() const;

  /// Rows inserted, changed or deleted since the file was opened.
  std::int64_t rowsChanged() const;
  bool isReadOnly() const;
  /// What messages call the file.
  const std::string& name() const { return name_; }

 private:
  struct Closer {
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
  };
  struct SqlHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view sql) const { return std::hash<std::string_view>{}(sql); }
  };
  using Idle = std::vector<Cursor::Statement>;

  Cursor::Statement prepare(std::string_view sql);
  Cursor use(std::string_view sql);
  void check(int result) const;

  std::string name_;
  std::unique_ptr<sqlite3, Closer> database_;
  /// Statements that wait for their next use, by their text. A statement that is in use is not here, so that
  /// a second use of the same text at the same time gets a statement of its own.
  std::unordered_map<std::string, Idle, SqlHash, std::equal_to<>> idle_;
};

namespace detail {
template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <typename T>
struct IsVariant : std::false_type {};
template <typename... Types>
struct IsVariant<std::variant<Types...>> : std::true_type {};

template <typename T>
struct IsSpanOfVariants : std::false_type {};
template <typename... Types>
struct IsSpanOfVariants<std::span<const std::variant<Types...>>> : std::true_type {};
}  // namespace detail

template <typename T>
T Cursor::get(int column) const {
  if constexpr (detail::IsOptional<T>::value) {
    return isNull(column) ? T() : T(get<typename T::value_type>(column));
  } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
    return static_cast<T>(integer(column));
  } else if constexpr (std::is_same_v<T, double>) {
    return real(column);
  } else if constexpr (std::is_same_v<T, std::u16string>) {
    return text(column);
  } else if constexpr (std::is_same_v<T, std::string>) {
    return utf8(column);
  } else if constexpr (std::is_same_v<T, Bytes>) {
    const ByteView bytes = blob(column);
    return Bytes(bytes.begin(), bytes.end());
  } else {
    static_assert(std::is_same_v<T, ByteView>, "no column is of this type");
    return blob(column);
  }
}

template <typename T>
void Cursor::bindNext(int& index, const T& value) {
  if constexpr (detail::IsSpanOfVariants<T>::value) {
    for (const auto& element : value) bind(++index, element);
  } else {
    bind(++index, value);
  }
}

template <typename T>
void Cursor::bind(int index, const T& value) {
  if constexpr (detail::IsOptional<T>::value) {
    if (value) bind(index, *value);
  } else if constexpr (detail::IsVariant<T>::value) {
    std::visit([&](const auto& held) { bind(index, held); }, value);
  } else if constexpr (std::is_same_v<T, std::nullptr_t>) {
    // A parameter that is left alone is null.
  } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
    bindInteger(index, static_cast<std::int64_t>(value));
  } else if constexpr (std::is_floating_point_v<T>) {
    bindReal(index, value);
  } else if constexpr (std::is_convertible_v<const T&, std::u16string_view>) {
    bindText(index, std::u16string_view(value));
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    bindText(index, std::string_view(value));
  } else {
    bindBlob(index, ByteView(value));
  }
}

template <typename... Values>
Cursor Connection::query(std::string_view sql, const Values&... values) {
  Cursor cursor = use(sql);
  [[maybe_unused]] int index = 0;
  (cursor.bindNext(index, values), ...);
  return cursor;
}

template <typename... Values>
void Connection::run(std::string_view sql, const Values&... values) {
  Cursor cursor = query(sql, values...);
  while (cursor.next()) {
  }
}

}  // namespace emulator
