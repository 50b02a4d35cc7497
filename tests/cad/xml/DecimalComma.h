#pragma once

#include <clocale>
#include <locale>
#include <string>

/// Puts the program under a locale that writes numbers with a decimal comma and groups of thousands, for one test: the
/// C++ locale always, and the locale of the C library where such a one is installed.
class DecimalComma
{
public:
    DecimalComma() : m_cppLocale(std::locale::global(std::locale(std::locale::classic(), new Comma)))
    {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"}) {
            if (std::setlocale(LC_NUMERIC, name))
                return;
        }
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;
    ~DecimalComma()
    {
        std::locale::global(m_cppLocale);
        std::setlocale(LC_NUMERIC, m_cLocale.c_str());
    }

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::string m_cLocale = std::setlocale(LC_NUMERIC, nullptr);
    std::locale m_cppLocale;
};
