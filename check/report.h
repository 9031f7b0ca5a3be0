// What is printed: the lines of the groups, the summary, and the report.
#pragma once

#import <Foundation/Foundation.h>

/// What was looked at: the library and the system. Nothing about the person or the machine's name.
NSDictionary *DescriptionOfSystem(NSString *libraryPath);

void PrintSystem(NSDictionary *system);

/// Whether a line of a check holds; a fact always does.
bool Holds(NSDictionary *line);

/// Prints a group's title and its lines.
void PrintGroup(NSString *title, NSArray *lines);

/// "93 checks: 92 hold, 1 fails. 40 facts, 3 of them other than on Linux."
NSString *Summary(NSArray *lines);

/// Prints the report as JSON, or its summary, and writes it to a file unless that is nil. Returns the exit
/// status.
int Finish(NSDictionary *report, bool asJson, NSString *file);

/// Writes to standard output.
void Print(NSString *text);

/// Writes to standard error.
void PrintError(NSString *text);
