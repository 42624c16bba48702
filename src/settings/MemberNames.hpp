#pragma once

#include <string>

#include "jsontext/MemberNames.hpp"

/// The names of all members that the parsers look up in a resource document, built once.
namespace reference::docparser::member {

extern const std::string& kAlt;
extern const std::string& kAppThumbnail;
extern const std::string& kBaseCode;
extern const std::string& kClassProperty;
extern const std::string& kClassPropertyGroup;
extern const std::string& kDefaultValue;
extern const std::string& kDeprecated;
extern const std::string& kDeprecationStatus;
extern const std::string& kDescription;
extern const std::string& kExamples;
extern const std::string& kFcnType;
extern const std::string& kFileRef;
extern const std::string& kHelpFolder;
extern const std::string& kHelpLocation;
extern const std::string& kHref;
extern const std::string& kHtmlId;
extern const std::string& kInputGroup;
extern const std::string& kInputs;
extern const std::string& kIntroduced;
extern const std::string& kName;
extern const std::string& kNameValuePairs;
extern const std::string& kOpenCommand;
extern const std::string& kOutputs;
extern const std::string& kPackageName;
extern const std::string& kParameters;
extern const std::string& kProductName;
extern const std::string& kPurpose;
extern const std::string& kSeeAlso;
extern const std::string& kSupportPackages;
extern const std::string& kSyntax;
extern const std::string& kSyntaxGroup;
extern const std::string& kSyntaxType;
extern const std::string& kRefEntity;
extern const std::string& kRefItems;
extern const std::string& kRefPurpose;
extern const std::string& kTitle;
extern const std::string& kType;
extern const std::string& kUrl;
extern const std::string& kValue;

/// All of them. Other members of a document need not be kept, because no parser looks them up.
extern const jsontext::MemberNames& kAllNames;

} // namespace reference::docparser::member
