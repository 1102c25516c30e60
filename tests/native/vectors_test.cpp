// The floor's share of the families in expected.json: bytes and arithmetic.

#include <map>

#include "base/note.h"
#include "base/notename.h"
#include "check/checkrecords.h"
#include "check/marksearch.h"
#include "frqctrl/geometry.h"
#include "frqmap/edits.h"
#include "native/family.h"
#include "resampler/commandline.h"

namespace {

using testdata::Json, testdata::Utf8, testdata::Wide;

// "x" is a mark, "s" one with a suggestion of 100 Hz and one for each frame before it.
FrqMap MarkedMap(const std::string& pattern, SampleCount hop) {
  FrqMap map = MapOf(std::vector<double>(pattern.size(), 200.0), hop);
  map.HasMarks = pattern.find_first_not_of('.') != pattern.npos;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    map.Frames.Own()[i].Mark = pattern[i] != '.';
    if (pattern[i] == 's') map.Frames.Own()[i].SuggestedFrequency = 100.0 + static_cast<double>(i);
  }
  return map;
}

TEST(vectors, Names) {
  Family family("names");
  const Json& names = family.Entries();
  for (const Json& test : names["map_path_from_wave"]) {
    const std::string wave = test["wave"];
    for (const std::string name : {"frq", "vs4ufrq", "frc", "pmk", "dio", "mrq"}) {
      const FrqType kind = FrqTypeFromPathW(Wide("x." + name));
      family.Expect(Utf8(MapPathFromWaveW(Wide(wave), kind)), test[name]);
    }
  }
  for (const Json& test : names["wave_path_from_map_a"]) {
    family.Expect(Utf8(WavePathFromMapW(Wide(test["map"]))), test["wave"]);
  }
  for (const Json& test : names["frq_type_from_path_a"]) {
    family.Expect(FrqTypeFromPathW(Wide(test["path"])), test["type"]);
  }
  for (const Json& test : names["llsm"]) family.Expect(Utf8(LlsmPathFromWave(Wide(test["wave"]))), test["llsm"]);
  for (const Json& test : names["frame_count_from_file_size"]) {
    Json counts;
    for (const Json& kind : names["frame_count_kinds"]) counts.push_back(FrameCountFromFileSize(test["size"], kind));
    family.Expect(counts, test["counts"]);
  }
  Json highest;
  for (int kind = FrqTypeFrq; kind <= FrqTypeMrq; ++kind) highest.push_back(MaxFrequencyOfKind(FrqType{kind}));
  family.Expect(highest, names["max_frequency_of_kind"]);
}

TEST(vectors, Notes) {
  Family family("notes");
  const Json& notes = family.Entries();
  for (const Json& test : notes["note_name_from_number"]) {
    family.Expect(Utf8(NoteNameFromNumber(test["number"])), test["name"]);
  }
  for (const Json& test : notes["note_number_from_name"]) {
    family.Expect(NoteNumberFromName(Wide(test["name"])), test["number"]);
  }
  for (const Json& test : notes["hz_to_note"]) family.Expect(HzToNote(test["hz"]), test["note"], 1e-12);
  for (const Json& test : notes["note_to_hz"]) family.Expect(NoteToHz(test["note"]), test["hz"], 1e-12);
  for (const Json& test : notes["modulation"]) family.Expect(ModulationFromText(Wide(test["text"])), test["value"]);
  for (const Json& test : notes["create_command_line"]) {
    family.Expect(Utf8(CreateCommandLine(Wide(test["wave"]))), test["line"]);
  }
  for (const wchar_t* text : {L"C99999999999999999", L"か4", L"-1"}) EXPECT_EQ(NoteNumberFromName(text), -1) << text;
  for (const Json& test : notes["render_command_line"]) {
    const RenderSettings settings{test["pitch_shift"], test["modulation"], Wide(test["flags"])};
    family.Expect(NoteToRender(test["frequency"], settings.PitchShift), test["note"]);
    const std::wstring line =
        RenderCommandLine(Wide(test["wave"]), Wide(test["output"]), test["frequency"], test["length_ms"], settings);
    family.Expect(Utf8(line), test["line"]);
  }
}

// A step of an edit as the editor takes it, but for its windows; what the step gives.
Json Edit(FrqMap& map, const FrqMap& saved, const Json& operation, FrqType kind, int rowCount) {
  const std::string name = operation[0];
  if (name == "set" || name == "key_text") {
    const double value = ClampFrequency(ParseFrequency(Wide(operation.back())), kind, map.SinglePrecision);
    if (name == "set") map.SetFrequency(map.PositionOf(operation[1]), value);
    if (name == "key_text") map.Average = value;
    return {};
  }
  const auto rows = operation.back().get<std::vector<int>>();
  if (name == "scale") {
    const std::map<std::string, double> factors = {{"x3", 3}, {"x2", 2}, {"-", 0}, {"/2", 0.5}, {"/3", 1.0 / 3}};
    ScaleFrames(map, rows, factors.at(operation[1]), kind);
  }
  if (name == "interpolate") InterpolateFrames(map, rows, kind);
  if (name == "key") map.Average = MeanFrequency(map, rows).value_or(map.Average);
  return name == "reload" ? Json(RestoreFrames(map, saved, rows, rowCount)) : Json();
}

TEST(vectors, Edits) {
  Family::Each("edits", [](Family& family, const Json& test) {
    FrqMap map = MapOf(test["frequency"], test["hop"]);
    map.SinglePrecision = test["single_precision"];
    map.Average = test["average"];
    for (FrqFrame& frame : map.Frames.Own()) frame.Voiced = frame.Frequency > FrqNoPitch;
    const FrqMap saved = map;
    for (const Json& step : test["steps"]) {
      const Json result = Edit(map, saved, step["op"], test["frq_type"].get<FrqType>(), map.FrameCount);
      family.Expect(Named("op result average key frequency voiced",
                          {step["op"], result, map.Average, Utf8(FrequencyText(map.Average)),
                           Values(map, &FrqFrame::Frequency), Flags(map, &FrqFrame::Voiced)}),
                    step);
    }
    Json rows;
    for (const FrqFrame& frame : map.Frames) rows.push_back(Utf8(FrameRowText(frame.Frequency)));
    family.Expect(rows, test["rows"]);
  });
}

TEST(vectors, Selection) {
  Family::Each("selection", [](Family& family, const Json& test) {
    FrqMap map = MapOf(std::vector<double>(test["frames"].get<std::size_t>()), test["hop"]);
    for (const Json& step : test["steps"]) {
      map.SelectRange(step["a"], step["b"], step["clear_others"]);
      family.Expect(Flags(map, &FrqFrame::Selected), step["selected"]);
    }
  });
}

TEST(vectors, Marks) {
  Family::Each("marks", [](Family& family, const Json& test) {
    const FrqMap map = MarkedMap(test["pattern"], test["hop"]);
    for (const Json& step : test["find_next"]) {
      const SampleCount position = step["position"];
      family.Expect({map.FindNextMark(position, true), map.FindNextMark(position, false)},
                    {step["forward"], step["backward"]});
    }
    for (const Json& step : test["range"]) {
      SampleCount first = -2, last = -2;  // stays where nothing is written
      const int result = map.GetMarkRange(step["position"], first, last);
      const auto written = [](SampleCount value) { return value == -2 ? Json() : Json(value); };
      family.Expect({result, written(first), written(last)}, {step["result"], step["first"], step["last"]});
    }
    for (const Json& step : test["apply"]) {
      FrqMap applied = map;
      applied.ApplyMarks(step["position"], step["apply"]);
      const Json frequencies = Values(applied, &FrqFrame::Frequency);
      EXPECT_EQ(applied.Modified, frequencies != Values(map, &FrqFrame::Frequency)) << step;
      family.Expect({frequencies, Flags(applied, &FrqFrame::Mark), applied.HasMarks},
                    {step["frequency"], step["marks"], step["has_marks"]});
    }
  });
}

TEST(vectors, FindFailure) {
  Family::Each("find_failure", [](Family& family, const Json& test) {
    std::vector<FrqMap> maps;
    for (const Json& pattern : test["maps"]) maps.push_back(MarkedMap(pattern, test["hop"]));
    std::vector<const FrqMap*> pointers;
    for (const FrqMap& map : maps) pointers.push_back(&map);
    for (const Json& step : test["steps"]) {
      const auto found = FindMarkedRun(pointers, {step["index"], step["sample"]}, step["forward"]);
      family.Expect(found ? Json{found->Index, found->Sample} : Json(), step["found"]);
      EXPECT_EQ(step["result"], found ? 0 : -1);
    }
  });
}

std::string RecordOfRegions(const CheckRegionRecord& regions) {
  return Hex({reinterpret_cast<const char*>(&regions), 12 + 8 * regions.RegionCount});
}

TEST(vectors, Regions) {
  Family::Each("regions", [](Family& family, const Json& test) {
    const FrqMap map = MapOf(test["frequency"], 256, test["amplitude"]);
    const auto regions = MakeCheckRegions(map);
    family.Expect(regions->RegionCount, test["count"]);
    family.Expect(TextOfFlags(map.ComputeSoundRegions()), test["sounding"]);
    family.Expect(RecordOfRegions(*regions), test["record"]);
  });
}

TEST(vectors, Control) {
  Family::Each("control", [](Family& family, const Json& row) {
    const Json& plot = row["plot"];
    const TableGeometry table{.PlotRect = {plot[0], plot[1], plot[2], plot[3]},
                              .Zoom = row["zoom"],
                              .DpiScaleX = row["dpi_x"],
                              .DpiScaleY = row["dpi_y"],
                              .BottomNote = row["bottom_note"],
                              .ScrollColumn = row["scroll"],
                              .ThumbnailMode = row["thumbnail"]};
    family.Expect({table.ColumnWidth(), table.RowHeight()}, {row["column_width"], row["row_height"]});
    for (const Json& point : row["frequency_to_y"]) {
      family.Expect(table.FrequencyToY(point["frequency"], table.PlotRect.bottom), point["y"]);
    }
    const StrokeLimits limits{row["upper"], row["lower"]};
    for (const Json& point : row["y_to_frequency"]) {
      family.Expect(table.YToFrequency(point["y"], limits, row["single"]), point["frequency"], 1e-12);
    }
    for (const Json& point : row["x_to_column"]) {
      const auto column = [&](bool strict) { return table.XToColumn(point["x"], strict, row["frames"]); };
      family.Expect({column(true), column(false)}, {point["strict"], point["loose"]});
    }
  });
}

TEST(vectors, Check) {
  Family::Each("check", [](Family& family, const Json& test) {
    FrqMap map = Decode(test["file"], Family::File(test["file"])).value();
    const auto frames = MakeCheckFrames(map, Wide(test["map_path"]));
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(frames.get());
    const std::size_t size = sizeof(CheckFrameRecord) + map.Frames.size() * sizeof(CheckFrame);
    family.Expect({size, frames->Average}, {test["frames_record_size"], test["average"]});
    family.ExpectFile(Bytes(bytes + 528, bytes + size), test["frames_record_from_528"]);
    const std::u16string path(frames->MapPath);
    family.Expect(Utf8(std::wstring(path.begin(), path.end())), test["map_path"]);
    family.Expect(RecordOfRegions(*MakeCheckRegions(map)), test["regions_record"]);
  });
}

TEST(vectors, FitSize) {
  Family::Each("fit_size", [](Family& family, const Json& row) {
    const PixelSize size = ThumbnailClientSize(row["frames"], row["dpi"], row["dpi"]);
    family.Expect({size.width, size.height}, row["size"]);
  });
}

void ExpectImport(Family& family, VsProject project, const Json& import) {
  FrqMap map = MapOf(import["frequency"], import["hop"], import["amplitude"]);
  map.Average = import["average"];
  ASSERT_TRUE(SampleOntoProject(map, project));
  for (std::size_t i = 0; i < import["points"].size(); ++i) {
    const VsControlPoint& point = project.Points()[i];
    const Json& expected = import["points"][i];
    if (!expected[0].is_null()) family.Expect(point.Pitch, expected[0]);
    family.Expect({point.HasPitch, point.Dynamics}, {expected[1], expected[2]}, 1e-12);
  }
}

TEST(vectors, Vs) {
  Family::Each("vs", [](Family& family, const Json& test) {
    const VsProject project = ProjectOf(test["rate"], test["points_per_second"], test["points"]);
    family.Expect(project.AverageCents(), test["average_cents"]);
    const FrqMap map = MapOfProject(project).value();
    family.Expect(
        Named("hop frequency amplitude voiced", {map.Hop, Values(map, &FrqFrame::Frequency),
                                                 Values(map, &FrqFrame::Amplitude), Flags(map, &FrqFrame::Voiced)}),
        test["load"], 1e-12);
    const FrqMap resampled = ResampledMap(project, FrqTypeFrq).value();
    EXPECT_TRUE(map.HasProject && !resampled.HasProject);
    family.Expect(Named("frame_count average modified frequency amplitude",
                        {resampled.FrameCount, resampled.Average, resampled.Modified,
                         Values(resampled, &FrqFrame::Frequency), Values(resampled, &FrqFrame::Amplitude)}),
                  test["export_map"], 1e-12);
    family.ExpectFile(PmkOfProject(project).value(), test["export_pmk"]);
    for (const Json& import : test["import_map"]) ExpectImport(family, project, import);
  });
}

}  // namespace
