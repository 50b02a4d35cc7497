#pragma once

#include "ptx/readers/step/p21/Records.h"

#include <string>
#include <vector>

namespace ptxtest
{

/// Each entity of the data sections as it is written, without blanks: "#1=A(2,(3,4))", "#1=(A()B())".
std::vector<std::string> entityTexts(const ptx::step::p21::Records& records);
/// The same of the header: "FILE_NAME('a')".
std::vector<std::string> headerTexts(const ptx::step::p21::Records& records);
/// Every record in its order, with its role, for a comparison of whole results.
std::string allRecords(const ptx::step::p21::Records& records);
/// "#12 in line 34: the cause", each.
std::vector<std::string> damageTexts(std::string_view text, const ptx::step::p21::Records& records);
/// `data` as the data section of a whole file. Its first line is the fourth.
std::string fileWith(const std::string& data);

} // namespace ptxtest
