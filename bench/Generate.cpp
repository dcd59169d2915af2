// bench_generate SETTINGS FOLDER: writes a pair of sample files, FOLDER/dist.conf and
// FOLDER/server.conf, for measuring whole programs.
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "SampleFiles.h"
#include "files/Files.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: bench_generate SETTINGS FOLDER\n";
    return EXIT_FAILURE;
  }
  try {
    const quenmar::Path folder = argv[2];
    std::filesystem::create_directories(folder);
    const quenmar::SampleFiles files = quenmar::MakeSampleFiles(std::stoi(argv[1]));
    quenmar::WriteInPlace(folder / "dist.conf", files.distribution);
    quenmar::WriteInPlace(folder / "server.conf", files.server);
  } catch (const std::exception& error) {
    std::cerr << "bench_generate: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
