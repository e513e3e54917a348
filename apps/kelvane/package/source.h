// A package as its members, whether it is a zip file or still a folder of that layout.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kelvane/base/fault.h"

namespace kelvane {

// A member can't be had.
class MemberFault : public Fault {
 public:
  // why: what of it is true, "it is encrypted".
  MemberFault(const std::string& text, std::string why) : Fault(text), why_(std::move(why)) {}
  [[nodiscard]] const std::string& why() const { return why_; }

 private:
  std::string why_;
};

// Members are named as in the zip, "actionlists/clean.xml", sorted, and found case-blind.
class PackageSource {
 public:
  virtual ~PackageSource() = default;
  [[nodiscard]] virtual std::vector<std::string> members() const = 0;
  [[nodiscard]] virtual bool has(const std::string& member) const = 0;
  // The bytes of a member. A MemberFault when it is damaged or can't be read.
  [[nodiscard]] virtual std::string read(const std::string& member) const = 0;
  // It is a program, as its permission says.
  [[nodiscard]] virtual bool isExecutable(const std::string& member) const = 0;
};

// A Fault says what is wrong: not there or not readable, no zip file, truncated, what no package may hold
// (documents/package_rules.h; of a folder: links that lead out of it, to a folder or nowhere), two names that are one
// case-blind.
std::unique_ptr<PackageSource> openPackage(const std::string& path);
// The same of a .kvz of which these are the bytes; the path is for what is told of it.
std::unique_ptr<PackageSource> openPackage(const std::string& path, std::string bytes);
// Whether a name ends as a package's does; case is no difference.
bool isPackageName(std::string_view name);
// Something of such a name, or a folder with a package's index.
bool isPackage(const std::string& path);

// "standards.kvz" for "packages/standards.KVZ" as for the folder "packages/standards/".
std::string packageFileName(const std::string& path);
// The package's action lists: "clean.xml"; its filters.
std::vector<std::string> actionLists(const PackageSource& package);
std::vector<std::string> filters(const PackageSource& package);
// Whether a name among `known` is meant, written with or without ".xml".
bool hasName(const std::vector<std::string>& known, const std::string& written);
// The name among `known` that a person wrote with or without ".xml"; a Fault that shows those there are.
std::string chosenName(const std::string& written, const std::vector<std::string>& known, const std::string& what);

// What a package must hold besides system/index.kvane, with the content that a missing one gets.
const std::map<std::string, std::string>& folderMarks();
constexpr const char* kPackageIndex = "system/index.kvane";

// A folder as its package will be: with the marks that it lacks.
class MarkedPackage : public PackageSource {
 public:
  // under isn't owned and outlives it.
  explicit MarkedPackage(const PackageSource& under) : under_(under) {}
  [[nodiscard]] std::vector<std::string> members() const override;
  [[nodiscard]] bool has(const std::string& member) const override;
  [[nodiscard]] std::string read(const std::string& member) const override;
  [[nodiscard]] bool isExecutable(const std::string& member) const override;

 private:
  const PackageSource& under_;
};

}  // namespace kelvane
