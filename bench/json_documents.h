// The documents that the JSON benchmarks read.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace quendal::bench {

struct JsonDocument {
  std::string name;
  std::string utf8;
  std::u16string utf16;
};

using Random = std::mt19937;

inline unsigned upTo(Random& random, unsigned most) {
  return std::uniform_int_distribution<unsigned>(0, most)(random);
}

inline std::string words(Random& random, unsigned count) {
  static const char* const kWords[] = {"naïve", "report",  "\\\"quoted\\\"", "東京都", "page",
                                       "übung", "line\\n", "http://a.b/c",   "x",      "2026"};
  std::string text;
  for (unsigned i = 0; i < count; ++i) {
    if (i != 0) text += ' ';
    text += kWords[upTo(random, std::size(kWords) - 1)];
  }
  return text;
}

/// Much text in objects of many members.
inline std::string messages() {
  Random random(1);
  std::string text = "{\n  \"statuses\": [";
  for (int i = 0; i < 800; ++i) {
    text += i == 0 ? "\n    {" : ",\n    {";
    for (int member = 0; member < 14; ++member) {
      text += member == 0 ? "\n      " : ",\n      ";
      text += "\"member_" + std::to_string(member) + "\": ";
      if (member % 3 == 0)
        text += "\"" + words(random, upTo(random, 12)) + "\"";
      else if (member % 3 == 1)
        text += std::to_string(upTo(random, 1'000'000));
      else
        text += member % 2 == 0 ? "null" : "false";
    }
    text += ",\n      \"user\": {\"id\": 7, \"name\": \"" + words(random, 2) + "\"}\n    }";
  }
  return text + "\n  ]\n}\n";
}

/// Objects with numbers for keys, and deep indentation.
inline std::string catalogue() {
  Random random(2);
  std::string text = "{\n    \"events\": {";
  for (int i = 0; i < 8000; ++i) {
    const std::string id = std::to_string(138586341 + i * 4);
    text += i == 0 ? "\n" : ",\n";
    text += "        \"" + id + "\": {\n            \"id\": " + id +
            ",\n            \"name\": null,\n            \"prices\": [\n                {\n" +
            "                    \"amount\": " + std::to_string(upTo(random, 99'999)) +
            "\n                }\n            ],\n            \"seats\": [" +
            std::to_string(upTo(random, 99)) + "]\n        }";
  }
  return text + "\n    }\n}\n";
}

/// Pairs of numbers with many digits.
inline std::string coordinates() {
  Random random(3);
  std::uniform_real_distribution<double> degrees(-180, 180);
  std::string text = "{\"type\":\"Polygon\",\"coordinates\":[[";
  char pair[64];
  for (int i = 0; i < 56'000; ++i) {
    std::snprintf(pair, sizeof(pair), "%s[%.15f,%.15f]", i == 0 ? "" : ",", degrees(random),
                  degrees(random));
    text += pair;
  }
  return text + "]]}";
}

inline std::u16string utf16Of(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end())).u16string();
}

inline JsonDocument load(const std::string& name, std::string (*makeUp)()) {
  const char* folder = std::getenv("QUENDAL_BENCH_DATA");
  JsonDocument document{name, {}, {}};
  if (folder != nullptr) {
    std::ifstream file(std::filesystem::path(folder) / name, std::ios::binary);
    document.utf8.assign(std::istreambuf_iterator<char>(file), {});
  }
  if (document.utf8.empty()) {
    document.name = "like " + name;
    document.utf8 = makeUp();
  }
  document.utf16 = utf16Of(document.utf8);
  return document;
}

/// twitter.json, citm_catalog.json and canada.json from the folder that the environment variable
/// QUENDAL_BENCH_DATA names; documents made up to be like them in place of those that are not
/// there.
inline std::vector<JsonDocument> jsonDocuments() {
  std::vector<JsonDocument> documents;
  documents.push_back(load("twitter.json", &messages));
  documents.push_back(load("citm_catalog.json", &catalogue));
  documents.push_back(load("canada.json", &coordinates));
  return documents;
}

}  // namespace quendal::bench
