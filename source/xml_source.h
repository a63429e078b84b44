// The XML measurement document (root `AnalyserData`) and the lookups the
// readers make in it. Each lookup answers exactly what its XPath query
// would (first match in document order, attribute texts compared as
// strings), but from indexes built once per document, so that reading a
// file costs time in proportion to its size.
#ifndef Z4400_SOURCE_XML_SOURCE_H_
#define Z4400_SOURCE_XML_SOURCE_H_

#include <cstddef>
#include <memory>
#include <pugixml.hpp>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z4400 {

class XmlSource {
 public:
  /// Parses a document from `bytes` with pugixml's default options (no
  /// DOCTYPE, no entity expansion). A document that does not parse is left
  /// empty, and every lookup then finds nothing.
  void Load(std::string_view bytes);

  /// The source's own buffer, `size` bytes long, for the caller to fill
  /// with a document and then parse with `LoadBuffer`: the bytes are held
  /// once, parsed where they are. The current document is dropped; the
  /// memory is kept from document to document.
  std::span<char> Buffer(std::size_t size);
  /// Parses the bytes of `Buffer` as `Load` does.
  void LoadBuffer();
  /// Drops the document and its lookups and gives back their memory (the
  /// buffer stays for the next document); every lookup then finds nothing.
  void Release();

  /// "//AnalyserData": the first such element, or null.
  pugi::xml_node Root() const { return root_; }
  /// "//AnalyserData/Parameter[@Id=id]", or null.
  pugi::xml_node FileParameter(std::string_view id) const;
  /// "//AnalyserData/Context[@Nb=nb]/Parameter[@Id=id]", or null.
  pugi::xml_node ScreenParameter(std::string_view nb, std::string_view id) const;
  /// "//AnalyserData/Context[@Nb=nb]/Marker[@Nb=marker]", or null.
  pugi::xml_node Marker(std::string_view nb, std::string_view marker) const;
  /// Number of "//Trace/Table" elements.
  int TraceTableCount() const { return trace_table_count_; }
  /// "//Context[@Nb=nb]/Trace/Table" in document order.
  const std::vector<pugi::xml_node>& ScreenTables(std::string_view nb) const;

  /// For each point k of `table` (0 ≤ k < `levels.size()`), the number in
  /// the "Lvl" attribute of the first "Item" child whose "Point" attribute
  /// is k written in decimal, read by `NumericValue`; points without such
  /// an item keep their level.
  static void ReadPointLevels(pugi::xml_node table, std::span<double> levels);
  /// "Parameter[@Id=id]" under `element`, or null.
  static pugi::xml_node ChildParameter(pugi::xml_node element, std::string_view id);

 private:
  using NodeIndex = std::unordered_map<std::string, pugi::xml_node>;
  void BuildIndexes();

  std::unique_ptr<char[]> buffer_;  // the document's bytes, parsed in place
  std::size_t capacity_ = 0;
  std::size_t size_ = 0;
  pugi::xml_document document_;
  pugi::xml_node root_;
  NodeIndex file_parameters_;                                                   // key: Id
  NodeIndex screen_parameters_;                                                 // key: Nb '\0' Id
  NodeIndex markers_;                                                           // key: Nb '\0' Nb
  std::unordered_map<std::string, std::vector<pugi::xml_node>> screen_tables_;  // key: Nb
  int trace_table_count_ = 0;
};

}  // namespace z4400

#endif  // Z4400_SOURCE_XML_SOURCE_H_
