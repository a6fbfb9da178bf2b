// generate tables FOLDER ROWS
// generate patients FILE CITIZENS
//
// Makes up data of real shape: the regional tables of a SISS client, or a list of a doctor's patients.
#include "simulator/norda/generated_data.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

int main(int count, char** arguments)
{
    using namespace vellumo;
    const std::vector<std::string> words(arguments + 1, arguments + count);
    try
    {
        if (words.size() == 3 && words[0] == "tables")
        {
            norda::WriteTables(std::filesystem::u8path(words[1]), std::stoul(words[2]));
            return EXIT_SUCCESS;
        }
        if (words.size() == 3 && words[0] == "patients")
        {
            norda::WritePatientList(std::filesystem::u8path(words[1]), std::stoul(words[2]));
            return EXIT_SUCCESS;
        }
    }
    catch (const std::exception& fault)
    {
        std::cerr << "generate: " << fault.what() << '\n';
        return EXIT_FAILURE;
    }
    std::cerr << "usage: generate tables FOLDER ROWS | generate patients FILE CITIZENS\n";
    return 2;
}
