// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include "app/config_reader.h"

#include <algorithm>
#include <regex>
#include <string_view>
#include <system_error>

#include "app/xml_document.h"
#include "base/near_names.h"
#include "base/utf8.h"

namespace orvane::app {

namespace {

constexpr std::string_view kWidgets = "http://www.w3.org/ns/widgets";
constexpr std::string_view kTizen = "http://tizen.org/ns/widgets";

bool Matches(const std::string& text, const char* pattern) {
  constexpr size_t kLongest = 128;  // std::regex recurses per character
  return text.size() <= kLongest && std::regex_match(text, std::regex(pattern));
}

std::string Quoted(const std::string& name, std::string_view value) {
  return name + "=\"" + base::Shortened(value, 80) + "\"";
}

bool LooksLikeUri(std::string_view text) {
  const size_t colon = text.find("://");
  return colon != std::string_view::npos && colon > 0 &&
         text.find_first_of(" \t\r\n\"<>") == std::string_view::npos;
}

// Says why `source` cannot be the start page of the application in `folder`, and what to do; empty
// when it can. A page elsewhere (http or https) is not looked for.
std::string WhyNoStartFile(const std::filesystem::path& folder, const std::string& source) {
  if (source.rfind("http://", 0) == 0 || source.rfind("https://", 0) == 0) return {};
  const std::string name = source.substr(0, source.find_first_of("?#"));
  if (name.empty()) return "src names no file. Give the start page's, such as src=\"index.html\".";
  const std::filesystem::path path(name);
  if (path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end()) {
    return "src=\"" + source +
           "\" leads out of the application. Give a path relative to the folder of config.xml.";
  }
  std::error_code error;
  if (std::filesystem::is_regular_file(folder / path, error)) return {};
  return "the start file \"" + name + "\" does not exist in " + folder.string() +
         ". Add it, or correct src.";
}

// One reading of one config.xml; each Read… method takes one element.
class ConfigReader {
 public:
  explicit ConfigReader(const std::filesystem::path& folder)
      : file_((folder / "config.xml").string()), document_(file_) {
    application_.folder = folder;
  }

  WebApplication Read() {
    const pugi::xml_node root = document_.root();
    CheckRoot(root);
    if (errors_.empty()) {
      ReadVersion(root);
      for (const pugi::xml_node element : root.children()) {
        if (element.type() == pugi::node_element) ReadElement(element);
      }
      Conclude(root);
    }
    if (!errors_.empty()) throw AppError(std::move(errors_));
    return std::move(application_);
  }

 private:
  using Method = void (ConfigReader::*)(const pugi::xml_node&);
  struct ElementRow {
    std::string_view space, name;
    Method read;
  };
  static const ElementRow kRows[];

  void Error(const pugi::xml_node& element, std::string text) {
    errors_.push_back({file_, document_.LineOf(element), element.name(), std::move(text)});
  }
  void Warn(const pugi::xml_node& element, std::string text) {
    application_.warnings.push_back(
        {file_, document_.LineOf(element), element.name(), std::move(text)});
  }

  void CheckRoot(const pugi::xml_node& root);
  void ReadVersion(const pugi::xml_node& root);
  void ReadElement(const pugi::xml_node& element);
  void WarnOfMisspelling(const pugi::xml_node& element, std::string_view space);
  void ReadApplication(const pugi::xml_node& element);
  void CheckId(const pugi::xml_node& element);
  void ReadMetadata(const pugi::xml_node& element);
  void ReadPrivilege(const pugi::xml_node& element);
  void ReadProfile(const pugi::xml_node& element);
  void ReadName(const pugi::xml_node& element);
  void ReadContent(const pugi::xml_node& element) { TakeContent(element, &content_); }
  void ReadTizenContent(const pugi::xml_node& element) { TakeContent(element, &tizen_content_); }
  void TakeContent(const pugi::xml_node& element, pugi::xml_node* place);
  void Conclude(const pugi::xml_node& root);
  void ChooseStartFile(const pugi::xml_node& root);

  const std::string file_;
  const XmlDocument document_;
  WebApplication application_;
  std::vector<Problem> errors_;
  pugi::xml_node application_element_, content_, tizen_content_, name_;
};

const ConfigReader::ElementRow ConfigReader::kRows[] = {
    {kTizen, "application", &ConfigReader::ReadApplication},
    {kTizen, "metadata", &ConfigReader::ReadMetadata},
    {kTizen, "privilege", &ConfigReader::ReadPrivilege},
    {kTizen, "profile", &ConfigReader::ReadProfile},
    {kTizen, "content", &ConfigReader::ReadTizenContent},
    {kWidgets, "content", &ConfigReader::ReadContent},
    {kWidgets, "name", &ConfigReader::ReadName},
};

void ConfigReader::CheckRoot(const pugi::xml_node& root) {
  if (TextOf(root, "local-name()") != "widget") {
    Error(root, "the outermost element must be <widget>.");
  } else if (TextOf(root, "namespace-uri()") != kWidgets) {
    Error(root, "the element is not in the widget namespace. Write <widget xmlns=\"" +
                    std::string(kWidgets) + "\" xmlns:tizen=\"" + std::string(kTizen) + "\">.");
  }
}

void ConfigReader::ReadVersion(const pugi::xml_node& root) {
  application_.version = root.attribute("version").value();
  if (application_.version.empty()) return;
  std::smatch parts;
  const bool short_enough = application_.version.size() <= 16;
  const bool ok =
      short_enough &&
      std::regex_match(application_.version, parts, std::regex(R"((\d+)\.(\d+)(?:\.(\d+))?)")) &&
      std::stoll(parts[1]) <= 255 && std::stoll(parts[2]) <= 255 &&
      (!parts[3].matched || std::stoll(parts[3]) <= 65535);
  if (!ok) {
    Warn(root, Quoted("version", application_.version) +
                   " is not x.y.z with numbers up to 255, 255 and 65535. Correct it.");
  }
}

void ConfigReader::ReadElement(const pugi::xml_node& element) {
  const std::string prefix(Prefix(element));
  const std::string space = TextOf(element, "namespace-uri()");
  if (space.empty() && !prefix.empty() && prefix != "xml") {
    const bool known = prefix == "tizen";
    Error(element, "the prefix " + prefix + " is declared nowhere. Add xmlns:" + prefix + "=\"" +
                       (known ? std::string(kTizen) : std::string("…")) + "\" to <widget>.");
    return;
  }
  const std::string name = TextOf(element, "local-name()");
  for (const ElementRow& row : kRows) {
    if (row.space == space && row.name == name) return (this->*row.read)(element);
  }
  WarnOfMisspelling(element, space);
}

// Elements that nothing here reads are the set's own business, unless they look like a slip.
void ConfigReader::WarnOfMisspelling(const pugi::xml_node& element, std::string_view space) {
  static constexpr std::string_view kOthers[] = {"access",
                                                 "account",
                                                 "allow-navigation",
                                                 "app-control",
                                                 "author",
                                                 "background-category",
                                                 "category",
                                                 "content-security-policy",
                                                 "content-security-policy-report-only",
                                                 "description",
                                                 "feature",
                                                 "icon",
                                                 "license",
                                                 "preference",
                                                 "service",
                                                 "setting"};
  const std::string name = TextOf(element, "local-name()");
  if (std::find(std::begin(kOthers), std::end(kOthers), name) != std::end(kOthers)) return;
  std::vector<std::string> near;
  for (const ElementRow& row : kRows) {
    if (row.name == name && row.space != space) {
      Warn(element, "the element is not in the namespace " + std::string(row.space) +
                        ", so that it counts for nothing. Write <" +
                        (row.space == kTizen ? "tizen:" : "") + name + ">.");
      return;
    }
    if (row.space == space) near.emplace_back(row.name);
  }
  near = base::NearNames(name, near, 1);
  if (!near.empty())
    Warn(element, "nothing reads an element of this name." + base::DidYouMean(near));
}

void ConfigReader::ReadApplication(const pugi::xml_node& element) {
  if (application_element_) {
    Error(element, "there is another one in line " +
                       std::to_string(document_.LineOf(application_element_)) +
                       ", and there must be exactly one. Remove one of them.");
    return;
  }
  application_element_ = element;
  CheckId(element);
  application_.required_version = element.attribute("required_version").value();
  if (application_.required_version.empty()) {
    Error(element,
          "the attribute required_version is missing. Add the lowest platform version "
          "that the application runs on, such as required_version=\"3.0\".");
  } else if (!Matches(application_.required_version, R"(\d{1,5}(\.\d{1,5}){0,2})")) {
    Error(element, Quoted("required_version", application_.required_version) +
                       " is no version. Write one such as \"3.0\".");
  }
}

void ConfigReader::CheckId(const pugi::xml_node& element) {
  application_.package = element.attribute("package").value();
  application_.id = element.attribute("id").value();
  const bool package_ok = Matches(application_.package, "[0-9a-zA-Z]{10}");
  const bool id_ok = Matches(application_.id, "[0-9a-zA-Z]{10}[.][0-9a-zA-Z]{1,52}");
  if (application_.package.empty()) {
    Error(element,
          "the attribute package is missing. Add the application's ten letters and "
          "digits, such as package=\"a1B2c3D4e5\".");
  } else if (!package_ok) {
    Error(element, Quoted("package", application_.package) + " is not ten letters and digits.");
  }
  if (application_.id.empty()) {
    Error(element,
          "the attribute id is missing. Add the package, a dot and a name, such as "
          "id=\"a1B2c3D4e5.Player\".");
  } else if (!id_ok) {
    Error(element, Quoted("id", application_.id) +
                       " is not ten letters and digits, a dot, and 1 to 52 letters and digits.");
  }
  if (package_ok && id_ok && application_.id.compare(0, 10, application_.package) != 0) {
    Error(element, Quoted("id", application_.id) + " does not begin with " +
                       Quoted("package", application_.package) + ". Make the two agree.");
  }
}

void ConfigReader::ReadMetadata(const pugi::xml_node& element) {
  const std::string key = element.attribute("key").value();
  if (key.empty()) {
    Error(element, "the attribute key is missing. Write <" + std::string(element.name()) +
                       " key=\"…\" value=\"…\"/>.");
    return;
  }
  const auto& known = application_.metadata;
  if (std::any_of(known.begin(), known.end(), [&](const auto& row) { return row.first == key; })) {
    Warn(element, Quoted("key", key) + " is given twice; a set uses the first. Remove this one.");
  }
  application_.metadata.emplace_back(key, element.attribute("value").value());
}

void ConfigReader::ReadPrivilege(const pugi::xml_node& element) {
  const std::string name = TextOf(element, "normalize-space(@name)");
  if (name.empty()) {
    Error(element,
          "the attribute name is missing. Write the privilege's address, such as "
          "name=\"http://tizen.org/privilege/tv.inputdevice\".");
    return;
  }
  if (!LooksLikeUri(name)) {
    Warn(element, Quoted("name", name) +
                      " is no address of a privilege, which looks like "
                      "http://tizen.org/privilege/tv.inputdevice.");
  }
  auto& known = application_.privileges;
  if (std::find(known.begin(), known.end(), name) != known.end()) {
    Warn(element, Quoted("name", name) + " is given twice. Remove this one.");
    return;
  }
  known.push_back(name);
}

void ConfigReader::ReadProfile(const pugi::xml_node& element) {
  const std::string name = element.attribute("name").value();
  if (name == "tv" || name.rfind("tv-", 0) == 0) return;
  const bool other = name == "mobile" || name == "wearable" || name == "ivi" || name == "common";
  Warn(element, Quoted("name", name) + (other ? " is not a television's" : " is no known") +
                    " profile. Write name=\"tv\", or a profile of a maker's sets (\"tv-…\").");
}

void ConfigReader::ReadName(const pugi::xml_node& element) {
  const bool neutral = !element.attribute("xml:lang");
  if (name_ && (!neutral || !name_.attribute("xml:lang"))) return;
  name_ = element;
  application_.name = TextOf(element, "normalize-space()");
}

void ConfigReader::TakeContent(const pugi::xml_node& element, pugi::xml_node* place) {
  if (*place) {
    Warn(element, "there is another one in line " + std::to_string(document_.LineOf(*place)) +
                      ", which is used. Remove this one.");
    return;
  }
  *place = element;
  const std::string type = element.attribute("type").value();
  const bool known = type.empty() || type == "text/html" || type == "application/xhtml+xml" ||
                     type == "image/svg+xml";
  if (!known) Warn(element, Quoted("type", type) + " is no page. Write type=\"text/html\".");
}

void ConfigReader::Conclude(const pugi::xml_node& root) {
  if (!application_element_) {
    Error(root,
          "<tizen:application> is missing. Add <tizen:application id=\"a1B2c3D4e5.Player\" "
          "package=\"a1B2c3D4e5\" required_version=\"3.0\"/> with ten letters and digits of "
          "your own, and xmlns:tizen=\"" +
              std::string(kTizen) + "\" to <widget>.");
  }
  if (application_.name.empty()) application_.name = application_.id;
  ChooseStartFile(root);
}

void ConfigReader::ChooseStartFile(const pugi::xml_node& root) {
  const pugi::xml_node element = tizen_content_ ? tizen_content_ : content_;
  if (!element) {
    application_.content = "index.html";
    if (!WhyNoStartFile(application_.folder, application_.content).empty()) {
      Error(root,
            "there is no <content>, and the start file that counts then, index.html, does "
            "not exist. Add the file, or <content src=\"…\"/>.");
    }
    return;
  }
  application_.content = element.attribute("src").value();
  const std::string why = WhyNoStartFile(application_.folder, application_.content);
  if (!why.empty()) Error(element, why);
}

}  // namespace

WebApplication ReadConfig(const std::filesystem::path& folder) {
  return ConfigReader(folder).Read();
}

}  // namespace orvane::app
