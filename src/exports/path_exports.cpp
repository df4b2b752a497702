// The path family.
#include "exports/adapters.hpp"
#include "exports/call.hpp"
#include "files/path.hpp"

using namespace nivaro;

void FILEEXT(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileExt(text(path, pathLength)); });
}

void FILEEXTKC(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileExtKc(text(path, pathLength)); });
}

void FILE___EXT(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileTail(text(path, pathLength)); });
}

void FILENAME(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileName(text(path, pathLength)); });
}

void FILENAMEEXT(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileNameExt(text(path, pathLength)); });
}

void FILENAMENO_(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileNameNoTail(text(path, pathLength)); });
}

void FILENAMEPATH(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileNamePath(text(path, pathLength)); });
}

void FILENAMEPATHNO_(char* result, Length resultLength, const char* path,
                     Length pathLength) noexcept {
  call(__func__,
       [&] { TextOut(result, resultLength) = fileNamePathNoTail(text(path, pathLength)); });
}

void FILEFOLDERPATH(char* result, Length resultLength, const char* path,
                    Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = fileFolderPath(text(path, pathLength)); });
}

void DOSPATH(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = dosPath(text(path, pathLength)); });
}

void CORRECTSLASH(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = correctSlash(text(path, pathLength)); });
}

void REMOVEDOTDOT(char* result, Length resultLength, const char* path, Length pathLength) noexcept {
  call(__func__, [&] { TextOut(result, resultLength) = removeDotDot(text(path, pathLength)); });
}

void CLEANPATH(char* result, Length resultLength, char* path, Length pathLength) noexcept {
  call(__func__, [&] {
    const std::string cleaned = cleanPath(TextInOut(path, pathLength));
    TextOut(result, resultLength) = cleaned;
  });
}

void ADDFOLDER(char* result, Length resultLength, const char* folder, const char* file,
               Length folderLength, Length fileLength) noexcept {
  call(__func__, [&] {
    TextOut(result, resultLength) = addFolder(text(folder, folderLength), text(file, fileLength));
  });
}

void CHANGEDRIVE(char* path, const char* drive, Length pathLength, Length driveLength) noexcept {
  call(__func__, [&] { changeDrive(TextInOut(path, pathLength), text(drive, driveLength)); });
}
