// The planted bugs: for each file of the core, small mistakes that someone could make there. `find`
// is text that stands exactly once in the file, `replace` what the mistake makes of it. When a file
// is rewritten, move its entries to where the same mistake can now be made. An entry with
// `arch` stands in code that is compiled for that processor alone.

/** @type {Record<string, {name: string, arch?: string, find: string, replace: string}[]>} */
export const bugs = {
  'primitives/to_int32.hpp': [
    {
      name: 'rounds instead of truncating',
      find: 'return static_cast<std::int32_t>(value);',
      replace: 'return static_cast<std::int32_t>(value < 0 ? value - 0.5 : value + 0.5);',
    },
    {
      name: 'what is too large becomes the largest integer',
      find: 'return std::numeric_limits<std::int32_t>::min();',
      replace:
        'return value > 0 ? std::numeric_limits<std::int32_t>::max() : std::numeric_limits<std::int32_t>::min();',
    },
    {
      name: 'the range ends at the largest integer, before truncation',
      find: 'value < 2147483648.0',
      replace: 'value <= 2147483647.0',
    },
    {
      name: 'the product saturates instead of wrapping',
      find: 'return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));',
      replace: 'return to_int32(static_cast<double>(a) * static_cast<double>(b));',
    },
  ],

  'primitives/vectors.cpp': [
    {
      name: 'the mean is summed from the back',
      find: 'for (std::int32_t i = 0; i < count; ++i) sum += values[static_cast<std::size_t>(i)];',
      replace:
        'for (std::int32_t i = count; i > 0; --i) sum += values[static_cast<std::size_t>(i - 1)];',
    },
    {
      name: 'the mean of nothing is 0',
      find: 'if (count == 0) return std::numeric_limits<double>::quiet_NaN();',
      replace: 'if (count == 0) return 0.0;',
    },
    {
      name: 'the mean adds up quotients',
      find: 'return sum / count;',
      replace: 'return sum * (1.0 / count);',
    },
    {
      name: 'the sum starts from the first value and keeps -0.0',
      find: 'double sum = 0.0;',
      replace: 'double sum = -0.0;',
    },
    {
      name: 'distance is scaled as hypot',
      find: 'return std::sqrt(dx * dx + dy * dy);',
      replace: 'return std::hypot(dx, dy);',
    },
    {
      name: 'the distances of an empty set are an empty vector',
      find: 'if (count == 0) return {std::numeric_limits<double>::quiet_NaN()};',
      replace: 'if (count == 0) return {};',
    },
    {
      name: 'the distance to the first point itself is left out',
      find: 'for (std::size_t i = 0; i < x.size(); ++i) {\n    const double dy = y[0] - y[i];',
      replace: 'for (std::size_t i = 1; i < x.size(); ++i) {\n    const double dy = y[0] - y[i];',
    },
    {
      name: 'min_index of nothing is 0',
      find: 'if (count == 0) return 1;',
      replace: 'if (count == 0) return 0;',
    },
    {
      name: 'min_index takes the last of equals',
      find: 'if (smallest > value) {',
      replace: 'if (smallest >= value) {',
    },
    {
      name: 'min_index lets go of a NaN that stands first',
      find: 'if (smallest > value) {',
      replace: 'if (!(smallest <= value)) {',
    },
    {
      name: 'the right edge of a box is outside',
      find: 'box_x[1] >= px',
      replace: 'box_x[1] > px',
    },
    {
      name: 'the low edge of a box is outside',
      find: 'py >= box_y[0]',
      replace: 'py > box_y[0]',
    },
    {
      name: 'the smallest takes the last of equals',
      find: 'if (value < extremes.min) extremes.min = value;',
      replace: 'if (value <= extremes.min) extremes.min = value;',
    },
    {
      name: 'the largest takes the last of equals',
      find: 'if (value > extremes.max) extremes.max = value;',
      replace: 'if (value >= extremes.max) extremes.max = value;',
    },
    {
      name: 'the extremes let go of a NaN that stands first',
      find: 'if (value < extremes.min) extremes.min = value;',
      replace: 'if (!(value >= extremes.min)) extremes.min = value;',
    },
    {
      name: 'the smallest y of a group is the last of equals',
      find: 'in_y.min = y[i] < in_y.min',
      replace: 'in_y.min = y[i] <= in_y.min',
    },
    {
      name: 'the largest x of a group is the last of equals',
      find: 'in_x.max = x[i] > in_x.max',
      replace: 'in_x.max = x[i] >= in_x.max',
    },
    {
      name: 'the largest y of a group lets go of a NaN that stands first',
      find: 'in_y.max = y[i] > in_y.max',
      replace: 'in_y.max = !(y[i] <= in_y.max)',
    },
  ],

  'primitives/check_solid_filled.cpp': [
    {
      name: 'an extent is rounded down to whole cells',
      find: 'std::ceil(',
      replace: 'std::floor(',
    },
    {
      name: 'an extent is one cell wider',
      find: 'std::ceil((extremes.max - extremes.min) / cell_size)',
      replace: 'std::ceil((extremes.max - extremes.min) / cell_size + 1.0)',
    },
    {
      name: 'exactly as many times as long is not a line',
      find: 'return ratio >= (',
      replace: 'return ratio > (',
    },
    {
      name: 'two cells are as one',
      find: 'cells == 1 ? 4.0F : 2.0F',
      replace: 'cells <= 2 ? 4.0F : 2.0F',
    },
    {
      name: 'one cell is as two',
      find: 'cells == 1 ? 4.0F : 2.0F',
      replace: 'cells == 0 ? 4.0F : 2.0F',
    },
    {
      name: 'no cells are as one',
      find: 'if (cells < 1) return false;',
      replace: 'if (cells < 0) return false;',
    },
    {
      name: 'the ratio of height to width stays double',
      find: 'if (is_line(columns, static_cast<float>(height / width))) return false;',
      replace: 'if (columns > 0 && height / width >= (columns == 1 ? 4.0 : 2.0)) return false;',
    },
    {
      name: 'the ratio of width to height stays double',
      find: 'if (is_line(rows, static_cast<float>(width / height))) return false;',
      replace: 'if (rows > 0 && width / height >= (rows == 1 ? 4.0 : 2.0)) return false;',
    },
    {
      name: 'upright lines are not looked for',
      find: 'if (is_line(columns, static_cast<float>(height / width))) return false;',
      replace: '',
    },
    {
      name: 'flat lines are not looked for',
      find: 'if (is_line(rows, static_cast<float>(width / height))) return false;',
      replace: '',
    },
    {
      name: 'four points are few enough',
      find: 'if (count < 4) return true;',
      replace: 'if (count <= 4) return true;',
    },
    {
      name: 'the product of the counts does not wrap',
      find: 'const double cells = wrapping_product(columns, rows);',
      replace: 'const double cells = width * height;',
    },
    {
      name: 'the fill stays double',
      find: 'const auto fill = static_cast<float>(static_cast<double>(count) / cells);',
      replace: 'const double fill = static_cast<double>(count) / cells;',
    },
    {
      name: 'exactly 65 percent is filled',
      find: 'static_cast<double>(fill) > 0.65',
      replace: 'fill >= 0.65F',
    },
  ],

  'primitives/cluster_algm.cpp': [
    {
      name: 'pixels go to cells however far apart they are',
      find: 'if (pixels && !chart_trace::are_near(pixels->frame)) unpack(pixels);',
      replace: '',
    },
    {
      name: 'packed pixels that do not fit cells are lost',
      find: 'pixels->pixels.unpack(x_points, y_points);',
      replace: '',
    },
    {
      name: 'pixels are taken from cells by a radius that takes nothing',
      find: 'pixels && largest_square >= 0.0 && gather_pixels',
      replace: 'pixels && gather_pixels',
    },
    {
      name: 'the number of distances is rounded down',
      find: 'std::ceil(length * cluster_fraction)',
      replace: 'std::floor(length * cluster_fraction)',
    },
    {
      name: 'the fraction is taken of all points and not of the others',
      find: 'std::ceil(length * cluster_fraction)',
      replace: 'std::ceil(count * cluster_fraction)',
    },
    {
      name: 'a number of distances out of range is clamped before it is converted',
      find: 'chart_trace::to_int32(std::ceil(length * cluster_fraction))',
      replace: 'chart_trace::to_int32(std::fmin(std::ceil(length * cluster_fraction), length))',
    },
    {
      name: 'the first point left over is lost',
      find: 'for (std::size_t i = 0; i < x_points.size(); ++i)',
      replace: 'for (std::size_t i = 1; i < x_points.size(); ++i)',
    },
  ],

  'primitives/point_density.cpp': [
    {
      name: '0.054 keeps every twelfth point',
      find: 'if (density == 0.054) return 8;',
      replace: 'if (density == 0.054) return 12;',
    },
    {
      name: '0.052 keeps every second point',
      find: 'if (density == 0.052) return 4;',
      replace: 'if (density == 0.052) return 2;',
    },
    {
      name: 'codes are compared in single precision',
      find: 'if (density == 0.05) return 1;',
      replace: 'if (static_cast<float>(density) == 0.05F) return 1;',
    },
    {
      name: 'a NaN that stands first is passed over',
      find: 'is_nan ? std::nullopt : left_.take_nearest(current_)',
      replace: 'left_.take_nearest(current_)',
    },
    {
      name: 'of nothing there are two empty groups',
      find: 'return {Group_of_arrays({std::numeric_limits<double>::quiet_NaN()})};',
      replace: 'return {Group_of_arrays({}), Group_of_arrays({})};',
    },
    {
      name: 'the stride starts at the second point',
      find: '(step++ & (stride - 1)) != 0',
      replace: '(++step & (stride - 1)) != 0',
    },
  ],

  'indexing/nearest_squares.cpp': [
    {
      name: 'few squares are not sorted',
      find: 'std::sort(squares.begin(), end);',
      replace: 'std::sort(squares.begin(), squares.begin());',
    },
    {
      name: 'many squares are sorted by the lower half of their bits',
      find: 'return bits_of(square);',
      replace: 'return bits_of(square) & 0xffffffffU;',
    },
    {
      name: 'many squares of pixels are sorted by the lower half of their bits',
      find: 'digits_of(std::uint32_t square) { return square; }',
      replace: 'digits_of(std::uint32_t square) { return square & 0xffffU; }',
    },
    {
      name: 'the largest squares of pixels do not count',
      find: 'std::numeric_limits<std::int32_t>::max()',
      replace: '0x7ffe0000',
    },
    {
      name: 'what the sample promised is all there is',
      find: 'if (nearest.size() < taken)',
      replace: 'if (nearest.empty())',
    },
    {
      name: 'the distance of the first point to itself counts',
      find: 'for (std::size_t first = 1; first < count; first += 64)',
      replace: 'for (std::size_t first = 0; first < count; first += 64)',
    },
    {
      name: 'an infinite distance does not count',
      find: 'nearest = squares_up_to(std::numeric_limits<double>::infinity(), squares, count);',
      replace: 'nearest = squares_up_to(std::numeric_limits<double>::max(), squares, count);',
    },
  ],

  'indexing/near_points.hpp': [
    {
      name: 'of two points the second is not looked at',
      find: '_mm_movemask_pd(_mm_cmple_pd(squares, largest));',
      replace: '_mm_movemask_pd(_mm_cmple_pd(squares, largest)) & 1;',
    },
    {
      name: 'a point at just the largest distance is not near',
      find: '_mm_cmple_pd(squares, largest)',
      replace: '_mm_cmplt_pd(squares, largest)',
    },
    {
      name: 'the last of an odd number of points is not near',
      find: 'static_cast<std::uint64_t>(is_near) << k',
      replace: 'static_cast<std::uint64_t>(0) << k',
    },
  ],

  'indexing/radix_sort.hpp': [
    {
      name: 'a digit is a bit short',
      find: '(std::uint64_t{1} << digit_bits) - 1',
      replace: '(std::uint64_t{1} << (digit_bits - 1)) - 1',
    },
    {
      name: 'equals share one place',
      find: 'const std::uint32_t next = place + count;',
      replace: 'const std::uint32_t next = place + (count > 0 ? 1 : 0);',
    },
    {
      name: 'differences in the highest bits are not seen',
      find: 'shift < 64 &&',
      replace: 'shift < 53 &&',
    },
  ],

  'indexing/squared_distance.hpp': [
    {
      name: 'a point exactly at the radius is gathered',
      find: 'while (!(std::sqrt(square) < radius))',
      replace: 'while (!(std::sqrt(square) <= radius))',
    },
    {
      name: 'a square that underflows has no reach',
      find: ' + 0x1p-536',
      replace: '',
    },
    {
      name: 'the reach is a little short',
      find: '(1.0 + 0x1p-50)',
      replace: '(1.0 - 0x1p-50)',
    },
  ],

  'indexing/near_pixels.hpp': [
    {
      name: 'a pixel at just the largest distance stays',
      find: '_mm_cmpgt_epi32(_mm_madd_epi16(away, away), largest_)',
      replace:
        '_mm_cmpgt_epi32(_mm_madd_epi16(away, away), _mm_sub_epi32(largest_, _mm_set1_epi32(1)))',
    },
    {
      name: 'a pixel that is told alone stays where it was taken',
      find: '    places[k] = nowhere;\n',
      replace: '',
    },
    {
      name: 'sixteen pixels are looked at in the wrong order',
      find: '_mm_packs_epi32(four.outside(next + 8), four.outside(next + 12))',
      replace: '_mm_packs_epi32(four.outside(next + 12), four.outside(next + 8))',
    },
    {
      name: 'pixels may be farther apart than their squares allow',
      find: 'frame.bottom - frame.top <= 32767',
      replace: 'frame.bottom - frame.top <= 32768',
    },
    {
      name: 'the sums of four lanes are added up in 32 bits',
      find: 'return std::uint64_t{parts[0]} + parts[1]',
      replace: 'return parts[0] + parts[1]',
    },
  ],

  'indexing/pixel_cells.cpp': [
    {
      name: 'places that stay empty hold what was in that memory before',
      find: 'std::fill_n(places_.data() + (filled - filled % 4), 4, nowhere_);',
      replace: 'static_cast<void>(filled);',
    },
    {
      name: 'a picture may be a pixel wider',
      find: 'if (width > longest || height > longest)',
      replace: 'if (width > longest + 1 || height > longest)',
    },
    {
      name: 'the largest discs are a little smaller',
      find: 'largest_of_squares = 2.0',
      replace: 'largest_of_squares = 1.9',
    },
    {
      name: 'what was taken is within reach of a disc in the corner below it',
      find: '(frame_.left + beyond) & 0xFFFF',
      replace: 'frame_.left',
    },
    {
      name: 'what was taken is within reach of a large disc',
      find: 'beyond = 2 * longest - 1',
      replace: 'beyond = longest',
    },
    {
      name: 'cells are numbered from the corner of all places',
      find: 'row * across_ + column - first_number_',
      replace: 'row * across_ + column',
    },
    {
      name: 'more pixels are taken at once than sums have room for',
      find: 'most_at_once = 1U << 18',
      replace: 'most_at_once = 1U << 20',
    },
    {
      name: 'the disc is as wide in all rows of a cell as in the last one',
      find: 'std::max({top - y, y - bottom, 0})',
      replace: 'std::max({bottom - y, y - bottom, 0})',
    },
    {
      name: 'the disc stops a row of cells early',
      find: 'row <= last; ++row) take_from_row',
      replace: 'row < last; ++row) take_from_row',
    },
    {
      name: 'the last pixels beyond four quarters are not counted',
      find: 'for (std::size_t i = 4 * quarter; i < count_; ++i) ++cells',
      replace: 'for (std::size_t i = 4 * quarter + 1; i < count_; ++i) ++cells',
    },
  ],

  'indexing/cell_grid.hpp': [
    {
      name: 'the first of two cells is never short',
      find: '1.0 / std::max(length, narrowest)',
      replace: '1.0 / std::max(length, 1.0)',
    },
    {
      name: 'what lies at the end of the first of two cells is in it',
      find: 'std::nextafter(1.0 / std::max(length, narrowest), 1.0 / narrowest)',
      replace: '1.0 / std::max(length, narrowest)',
    },
    {
      name: 'what lies beyond the last cell belongs to the first',
      find: 'std::min(count - 1.0, std::max(0.0, position))',
      replace: '(position < count ? std::max(0.0, position) : 0.0)',
    },
  ],

  'indexing/point_grid.cpp': [
    {
      name: 'clusters go on after a seed that is nowhere',
      find: 'while (next_ < held_.size() && held_[next_] == 0) ++next_;',
      replace:
        'while (next_ < held_.size() && (held_[next_] == 0 || place_of_[next_] == no_place)) ++next_;',
    },
    {
      name: 'grids lie within each other as deep as points lie closer and closer',
      find: 'is_skewed && skewed_above == most_skewed',
      replace: 'is_skewed && skewed_above > most_skewed',
    },
    {
      name: 'points are halved across their height where they are wide',
      find: '*middle - (is_wide ? box.left : box.low)',
      replace: '*middle - box.low',
    },
    {
      name: 'few gathered points are added up cell by cell',
      find: 'std::sort(gathered_.begin(), gathered_.end());',
      replace: 'std::sort(gathered_.begin(), gathered_.begin());',
    },
    {
      name: 'many gathered points are added up from the back',
      find: 'return i; });',
      replace: 'return ~i; });',
    },
    {
      name: 'the last of equally near points is next',
      find: 'indices_[place] > indices_[search.place]',
      replace: 'indices_[place] < indices_[search.place]',
    },
    {
      name: 'squares decide, and not their roots, when the larger one comes later',
      find: 'search.limit = square * (1.0 + 0x1p-50);',
      replace: 'search.limit = square;',
    },
    {
      name: 'squares decide, and not their roots, when the smaller one comes later',
      find: 'search.surely_nearer = square * (1.0 - 0x1p-50);',
      replace: 'search.surely_nearer = square;',
    },
    {
      name: 'the search for the nearest ends after the cells around',
      find: 'if (!(more_left || more_right || more_above || more_below)) return;',
      replace: 'if (search.square < 9e307) return;',
    },
    {
      name: 'the search for the nearest does not look further to the right',
      find: 'seen.right + 1 < cells.columns && cells',
      replace: 'seen.right + 1 < 1 && cells',
    },
    {
      name: 'the search for the nearest ends a cell early above',
      find: 'cells.row_of(centre.y - reach) < seen.top;',
      replace: 'cells.row_of(centre.y - reach) < seen.top - 1;',
    },
    {
      name: 'a point that was taken stays in its cell',
      find: 'xs_[search.place] = nowhere;',
      replace: '',
    },
    {
      name: 'of places looked at together only the one with the least square counts',
      find: 'const double limit = least * (1.0 + 0x1p-50);',
      replace: 'const double limit = least;',
    },
    {
      name: 'a search ends at the bottom of a block without its top',
      find: 'row == block.bottom ? block.top : row + 1',
      replace: 'row == block.bottom ? first_row : row + 1',
    },
    {
      name: 'the last places of a crowded stretch are not looked at',
      find: 'gather_between(starts_[cell], starts_[cell + 1], centre, largest_square);',
      replace: 'gather_between(starts_[cell], starts_[cell], centre, largest_square);',
    },
  ],

  'indexing/runs.hpp': [
    {
      name: 'a neighbour is found by adding the step, two points at a time',
      arch: 'x64',
      find: '_mm_cmpeq_pd(_mm_loadu_pd(x + first - 1), x_before)',
      replace:
        '_mm_cmpeq_pd(_mm_add_pd(_mm_loadu_pd(x + first - 1), steps), _mm_loadu_pd(x + first))',
    },
    {
      name: 'a run goes on into the next row, two points at a time',
      arch: 'x64',
      find: '_mm_and_pd(same_x, same_y)',
      replace: 'same_x',
    },
    {
      name: 'the last four of 64 points are not compared',
      find: 'j < 64; j += 4',
      replace: 'j < 60; j += 4',
    },
    {
      name: 'the 64 points are those before',
      find: 'four_carry_on(x, y, k + j, step) << j',
      replace: 'four_carry_on(x, y, k > 64 ? k + j - 64 : k + j, step) << j',
    },
    {
      name: 'the last few points do not count to the range of the runs',
      find: '    for (; k < count; ++k) range_of_x_.include(x[k]);\n',
      replace: '',
    },
    {
      name: 'the first two of four points are compared twice',
      arch: 'x64',
      find: 'two_carry_on(k + 2), _MM',
      replace: 'two_carry_on(k), _MM',
    },
    {
      name: 'a run that ends among the 64 points begins where the one before began',
      find: '    first = next;\n',
      replace: '',
    },
    {
      name: 'a neighbour is found by adding the step',
      find: 'x[k - 1] == x[k] - step',
      replace: 'x[k - 1] + step == x[k]',
    },
    {
      name: 'a run goes on into the next row',
      find: 'y[k - 1] == y[k] && ',
      replace: '',
    },
  ],

  'indexing/box.hpp': [
    {
      name: 'a box is judged by its middle',
      find: 'std::max(std::max(low - value, value - high), 0.0)',
      replace: 'std::max(value - (low * 0.5 + high * 0.5), low * 0.5 + high * 0.5 - value)',
    },
    {
      name: 'the left edge is outside',
      find: 'x >= left',
      replace: 'x > left',
    },
    {
      name: 'the right edge is outside',
      find: 'right >= x',
      replace: 'right > x',
    },
    {
      name: 'the low edge is outside',
      find: 'y >= low',
      replace: 'y > low',
    },
    {
      name: 'the high edge is outside',
      find: 'high >= y',
      replace: 'high > y',
    },
    {
      name: 'the box reaches a whole side each way',
      find: 'const double half = side * 0.5;',
      replace: 'const double half = side;',
    },
    {
      name: 'the height is not looked at',
      find: ' && y >= low && high >= y',
      replace: '',
    },
  ],

  'grouping/box_bubble.cpp': [
    {
      name: 'the seed is not in the group',
      find: '  x_group.push_back(x_points[0]);\n  y_group.push_back(y_points[0]);\n',
      replace: '',
    },
    {
      name: 'the seed is in the group twice',
      find: 'std::size_t i = 1;',
      replace: 'std::size_t i = 0;',
    },
    {
      name: 'the remainder is turned round',
      find: '(inside ? y_group : y_remain).push_back(y_points[i]);',
      replace:
        '(inside ? y_group : y_remain).push_back(y_points[i]);\n    if (!inside && i + 1 == x_points.size()) std::swap(x_remain.front(), x_remain.back());',
    },
    {
      name: 'an empty set is read',
      find: 'if (x_points.empty()) return;',
      replace: 'if (x_points.empty()) x_points = y_points = {0.0};',
    },
  ],

  'grouping/check_groups.cpp': [
    {
      name: 'the upper end lies a quarter of a pixel farther',
      find: 'static_cast<float>(extremes.max)',
      replace: 'static_cast<float>(extremes.max + 0.25)',
    },
    {
      name: 'the lower end is the upper one',
      find: 'static_cast<float>(extremes.min)',
      replace: 'static_cast<float>(extremes.max)',
    },
    {
      name: 'the step is half of it',
      find: 'extent_of(b), pixel_step)',
      replace: 'extent_of(b), pixel_step / 2)',
    },
    {
      name: 'the first and the last x of a run are taken for its ends',
      find: 'chart_trace::extremes_of(x)',
      replace: 'chart_trace::Extremes{x.front(), x.back()}',
    },
  ],

  'indexing/run_pairs.hpp': [
    {
      name: 'the extents stay double',
      find: 'static_cast<double>(a.max - b.min)',
      replace: '(static_cast<double>(a.max) - static_cast<double>(b.min))',
    },
    {
      name: 'the gap of the second before the first stays double',
      find: 'static_cast<double>(b.max - a.min)',
      replace: '(static_cast<double>(b.max) - static_cast<double>(a.min))',
    },
    {
      name: 'the step is narrowed to float',
      find: 'static_cast<double>(a.max - b.min) >= -step',
      replace: 'a.max - b.min >= -static_cast<float>(step)',
    },
    {
      name: 'a gap of exactly one step is too wide',
      find: 'static_cast<double>(b.max - a.min) >= -step',
      replace: 'static_cast<double>(b.max - a.min) > -step',
    },
    {
      name: 'a gap of exactly one step is too wide the other way round',
      find: 'static_cast<double>(a.max - b.min) >= -step',
      replace: 'static_cast<double>(a.max - b.min) > -step',
    },
    {
      name: 'equal minima measure the first run',
      find: 'if (a.min >= b.min)',
      replace: 'if (a.min > b.min)',
    },
    {
      name: 'NaN minima touch',
      find: 'return false;',
      replace: 'return true;',
    },
    {
      name: 'the gap is measured between the starts',
      find: 'b.max - a.min',
      replace: 'b.min - a.min',
    },
    {
      name: 'a run exactly one and a half steps below ends the search',
      find: 'rows[run] - rows[reference] > row_tolerance',
      replace: 'rows[run] - rows[reference] >= row_tolerance',
    },
    {
      name: 'a run exactly one and a half steps away joins',
      find: 'row_tolerance > std::fabs(',
      replace: 'row_tolerance >= std::fabs(',
    },
    {
      name: 'runs far above join',
      find: 'std::fabs(rows[run] - rows[reference])',
      replace: '(rows[run] - rows[reference])',
    },
  ],

  'indexing/run_flood.cpp': [
    {
      name: 'runs that wait turn round where the queue is full',
      find: '  if (end_ > pixels_.size() / 2) grow();\n',
      replace:
        '  if (end_ > pixels_.size() / 2) grow();\n  std::reverse(words_.begin(), words_.begin() + static_cast<std::ptrdiff_t>(end_));\n',
    },
    {
      name: 'columns right of 2^14 are held exactly',
      find: '(map.stride() - 1) <= 16384.0',
      replace: '(map.stride() - 1) <= 32768.0',
    },
    {
      name: 'columns left of -2^14 are held exactly',
      find: 'map.left() >= -16384.0',
      replace: 'map.left() >= -32768.0',
    },
    {
      name: 'the only run left stops a search that it is exempt from, on a bitmap',
      find: ' && runs_ - end_ != 1;',
      replace: ';',
    },
    {
      name: 'runs still waiting at the end of the list are searched from, on a bitmap',
      find: '  while (stopped && head < end_) {',
      replace: '  while ((stopped || true) && head < end_) {',
    },
    {
      name: 'the row below stops a search',
      find: '(std::max(row, 1U) - 1) * words_in_row_',
      replace: 'row * words_in_row_',
    },
    {
      name: 'the last pixel taken still stops searches',
      find: '  if (map_.word(last_word_) == 0) find_last_word();\n',
      replace: '  if (last_word_ + 1 == map_.words().size()) find_last_word();\n',
    },
    {
      name: 'the run that joined last is searched from next',
      find: '= queued(head++);',
      replace: '= queued(++head < end_ ? end_ - 1 : head - 1);',
    },
    {
      name: 'a run that ends with its word touches nothing beyond it',
      find: 'constexpr Word edges = Word{1} << (word_bits - 1) | 1;',
      replace: 'constexpr Word edges = 1;',
    },
    {
      name: 'a run that begins with its word touches nothing before it',
      find: 'constexpr Word edges = Word{1} << (word_bits - 1) | 1;',
      replace: 'constexpr Word edges = Word{1} << (word_bits - 1);',
    },
    {
      name: 'a run that other words begin is taken from where it was found',
      find: '    while (map_.is_free(place - 1)) --place;\n',
      replace: '',
    },
    {
      name: 'runs that leave the queue are counted as left',
      find: '  runs_ -= head;\n',
      replace: '',
    },
    {
      name: 'runs that were searched from stay in the queue',
      find: '  while (head < end) push(queued(head++));\n',
      replace: '  for (std::size_t k = 0; k < end; ++k) push(queued(k));\n',
    },
    {
      name: 'the runs still waiting when a search is not stopped are not written',
      find: '  for (; head < end_; ++head) write(queued(head), points);\n',
      replace: '',
    },
  ],

  'indexing/raster_runs.cpp': [
    {
      name: 'the ends of a row may overlap in raster order',
      find: '      if (!(pairs_.extents[k - 1].max <= extent.min)) return false;\n',
      replace: '',
    },
    {
      name: 'rows may come in any order in raster order',
      find: '      if (!(pairs_.rows[k - 1] < pairs_.rows[k])) return false;\n',
      replace: '',
    },
    {
      name: 'rows may lie close in raster order',
      find: '      if (row_above != row && pairs_.is_near(row_above, k)) return false;\n',
      replace: '',
    },
    {
      name: 'any step will do for raster order',
      find: '  if (!(pairs_.step > 0.0 && is_finite(pairs_.step))) return false;\n',
      replace: '',
    },
    {
      name: 'infinite rows are in raster order',
      find: ' || !is_finite(pairs_.rows[k])',
      replace: '',
    },
    {
      name: 'runs of a row that touch are not seen',
      find: '        touch_in_row = true;\n',
      replace: '',
    },
    {
      name: 'crowded rows are in raster order',
      find: '        if (k - row >= crowd && reaches(k - crowd, k)) return false;\n',
      replace: '',
    },
    {
      name: 'a run counts as crowded by one of the row above',
      find: 'k - row >= crowd && ',
      replace: 'k >= crowd && ',
    },
    {
      name: 'a crowd is smaller by one run',
      find: 'reaches(k - crowd, k)',
      replace: 'reaches(k - crowd + 1, k)',
    },
    {
      name: 'only the run to the left is seen in a row',
      find: '    ++same.last;\n',
      replace: '    break;\n',
    },
    {
      name: 'the first row that is not near is already below',
      find: '!pairs_.is_below(stopped_ - 1, last_left_ - 1)',
      replace: 'pairs_.is_near(stopped_ - 1, last_left_ - 1)',
    },
    {
      name: 'rows touch however far they are apart',
      find: 'first = last = pairs_.is_near(row_above, k) ? row_above : row;',
      replace: 'first = last = row_above;',
    },
    {
      name: 'only one run of the row below is seen',
      find: 'below.last = k + 1;',
      replace: 'below.last = below.first + 1;',
    },
    {
      name: 'a gap of one step is too wide for runs in raster order',
      find: '>= -pairs_.step',
      replace: '> -pairs_.step',
    },
    {
      name: 'the end of the list is not known before the first search',
      find: '  runs->find_last_left();\n',
      replace: '',
    },
  ],

  'indexing/raster_runs.hpp': [
    {
      name: 'runs that were taken are taken again',
      find: 'if (!is_left_[run]) continue;',
      replace: '',
    },
    {
      name: 'the last run taken still stops searches',
      find: '    if (last_left_ > 0 && !is_left_[last_left_ - 1]) find_last_left();\n',
      replace: '',
    },
    {
      name: 'the only run left stops a search that it is exempt from',
      find: 'first_is_exempt && left_ == 1',
      replace: 'first_is_exempt && left_ == 0',
    },
    {
      name: 'the first run left is exempt though others are left',
      find: ' && !(first_is_exempt && left_ == 1)',
      replace: ' && !first_is_exempt',
    },
  ],

  'indexing/unordered_runs.cpp': [
    {
      name: 'the first run left is held against the end of every search by index',
      find: 'first_is_exempt ? first + 1 : first',
      replace: 'first',
    },
    {
      name: 'the first run left is held against the end of no search by index',
      find: 'first_is_exempt ? first + 1 : first',
      replace: 'first + 1',
    },
    {
      name: 'the first run left is held against the end of every walk',
      find: ' && !(first_is_exempt && run == first)',
      replace: '',
    },
    {
      name: 'the first run left is held against the end of no walk',
      find: '!(first_is_exempt && run == first)',
      replace: 'run != first',
    },
    {
      name: 'the exempt run is not looked at by index',
      find: 'take_between(first, stop.place, reference, taken);',
      replace: 'take_between(first_is_exempt ? first + 1 : first, stop.place, reference, taken);',
    },
    {
      name: 'a walk does not go beyond the first runs',
      find: '  return lower_->visit_until(reference, far, look_at);',
      replace: '  return false;',
    },
    {
      name: 'what was taken while walking is found by the index',
      find: 'if (!left_.is_left(run)) remove_from_index(run);',
      replace: '',
    },
    {
      name: 'runs join in the order of their rows',
      find: '    if (found_.size() > 1) std::sort(found_.begin(), found_.end());\n',
      replace: '',
    },
    {
      name: 'runs behind the stop join',
      find: 'first <= run && run < last',
      replace: 'first <= run',
    },
  ],

  'indexing/runs_left.cpp': [
    {
      name: 'a reference that lies higher searches from where the last one stopped',
      find: '  if (!(row >= last_row_)) last_stop_ = 0;\n',
      replace: '',
    },
    {
      name: 'a stop exactly one and a half steps below',
      find: 'other - row > pairs_.row_tolerance',
      replace: 'other - row >= pairs_.row_tolerance',
    },
    {
      name: 'the stop is compared with a rounded bound',
      find: 'other - row > pairs_.row_tolerance',
      replace: 'other > row + pairs_.row_tolerance',
    },
    {
      name: 'a run that was taken stops the search',
      find: 'is_left_[found.last - 1]',
      replace: 'found.last > 0',
    },
    {
      name: 'a run before the place asked for stops the search',
      find: 'found.last <= from',
      replace: 'found.last == 0',
    },
    {
      name: 'a descent goes on whatever its rows do',
      find: 'run == 0 || !(row >= pairs_.rows[run - 1])',
      replace: 'run == 0',
    },
    {
      name: 'a descent of which nothing is left keeps its row',
      find: 'is_number ? pairs_.rows[last - 1] : -std::numeric_limits<double>::infinity();',
      replace: 'pairs_.rows[last > 0 ? last - 1 : 0];',
    },
    {
      name: 'the row of a run that was passed is not told to the tree',
      find: '  lowest_.lower(descent, row);\n',
      replace: '',
    },
    {
      name: 'the lowest run stays the lowest when it was taken',
      find: 'lowest_run_ == pairs_.count || !is_left_[lowest_run_]',
      replace: 'lowest_run_ == pairs_.count',
    },
    {
      name: 'the first run left is below though it is exempt',
      find: '  if (lowest_run_ < from) return stop_of(reference, from).stops;\n',
      replace: '',
    },
    {
      name: 'only the last descent passed may stop a search',
      find: 'std::max(lowest_passed_, walk_back(passed_))',
      replace: 'walk_back(passed_)',
    },
    {
      name: 'the last descent before a run is not passed',
      find: 'descents_[passed_].end <= run; ++passed_',
      replace: 'descents_[passed_].end < run; ++passed_',
    },
    {
      name: 'what was passed counts for ever',
      find: '    lowest_passed_ = -std::numeric_limits<double>::infinity();\n',
      replace: '',
    },
  ],

  'indexing/column_runs.cpp': [
    {
      name: 'any step will do for columns',
      find: '  if (pairs.step != 1.0) return false;\n',
      replace: '',
    },
    {
      name: 'columns may hold fractional rows',
      find: ' || !is_whole(pairs.rows[k])',
      replace: '',
    },
    {
      name: 'columns may lie between whole numbers',
      find: '!is_whole(extent.min) || !is_whole(extent.max) || ',
      replace: '',
    },
    {
      name: 'the runs of a column may come in any order',
      find: ' && pairs.rows[k - 1] < pairs.rows[k]',
      replace: '',
    },
    {
      name: 'a run that goes up to the left is not seen',
      find: 'extents[run].max == column && rows[run] < rows[reference] - 1.0',
      replace: 'extents[run].max == column && rows[run] < rows[reference]',
    },
    {
      name: 'a run that goes up to the right is not seen',
      find: 'extents[run].min <= column && rows[run] < rows[reference] - 1.0',
      replace: 'extents[run].min <= column && rows[run] < rows[reference]',
    },
    {
      name: 'the run above is not seen',
      find: '  if (reference > 0 && touch(reference - 1)) visit(reference - 1);\n',
      replace: '',
    },
    {
      name: 'the run below is not seen',
      find: '  if (reference + 1 < pairs_.count && touch(reference + 1)) visit(reference + 1);\n',
      replace: '',
    },
    {
      name: 'only one run of the column behind is seen',
      find: 'for (Run k = first_behind_[reference]; k < pairs_.count && touch(k); ++k) visit(k);',
      replace:
        'if (const Run k = first_behind_[reference]; k < pairs_.count && touch(k)) visit(k);',
    },
    {
      name: 'a search down a column takes what lies far above',
      find: 'if (pairs_.touch(reference, first)) take(first);',
      replace: 'take(first);',
    },
    {
      name: 'the first run left stops the search of a column though it is exempt',
      find: 'first_is_exempt ? first + 1 : first',
      replace: 'first',
    },
    {
      name: 'runs behind the stop of a column join',
      find: 'stop && run >= stop->place',
      replace: 'stop && run > pairs_.count',
    },
    {
      name: 'a search of columns for which a stop was looked up always stops',
      find: 'stop ? stop->stops :',
      replace: 'stop ? true :',
    },
    {
      name: 'runs of a column join twice',
      find: '    if (!left_.is_left(run)) return;\n',
      replace: '',
    },
  ],

  'indexing/lower_runs.cpp': [
    {
      name: 'the last runs of a list are in no lower part',
      find: 'begin < count; begin += at_once',
      replace: 'begin + at_once <= count; begin += at_once',
    },
    {
      name: 'a part is asked that leaves out the row above the reference',
      find: 'row - part.top >= pairs_.row_tolerance',
      replace: 'row >= part.top',
    },
    {
      name: 'parts are asked whatever the step',
      find: '  if (!(pairs_.row_tolerance >= 0.0)) return nullptr;\n',
      replace: '',
    },
  ],

  'indexing/lower_runs.hpp': [
    {
      name: 'runs that meet only with a gap of a step are passed over',
      find: 'static_cast<double>(gap) < -pairs_.step',
      replace: 'static_cast<double>(gap) <= -pairs_.step',
    },
    {
      name: 'runs that overlap are passed over',
      find: 'static_cast<double>(other_gap) < -pairs_.step',
      replace: 'static_cast<double>(other_gap) < pairs_.step',
    },
    {
      name: 'a search begins one run too late',
      find: 'items[first].run < from',
      replace: 'items[first].run <= from',
    },
  ],

  'indexing/run_map.hpp': [
    {
      name: 'the column behind a run is not looked at',
      find: 'place + span.length + 2',
      replace: 'place + span.length + 1',
    },
    {
      name: 'the row below is not looked at',
      find: '{around - stride_, around, around + stride_}',
      replace: '{around - stride_, around}',
    },
    {
      name: 'the rank counts the pixel itself',
      find: '<< place % word_bits))',
      replace: '<< place % word_bits << 1))',
    },
    {
      name: 'only the first 64 pixels of a run are taken off the map',
      find: '      place += count;\n',
      replace: '      place = end;\n',
    },
  ],

  'indexing/run_map.cpp': [
    {
      name: 'any step will do for the map',
      find: 'pairs.step != 1.0 || ',
      replace: '',
    },
    {
      name: 'a fractional row is rounded to the map',
      find: 'static_cast<double>(row) == pairs.rows[run]',
      replace: 'true',
    },
    {
      name: 'a fractional end is rounded to the map',
      find: 'static_cast<float>(last) == extent.max',
      replace: 'true',
    },
    {
      name: 'a pixel may be covered twice',
      find: 'return twice == 0;',
      replace: 'return true;',
    },
    {
      name: 'the map has no free columns',
      find: 'bounds->width() + 2',
      replace: 'bounds->width()',
    },
    {
      name: 'no picture is too sparse for a map',
      find: 'std::min(128 * pixels + (1 << 20), std::int64_t{UINT32_MAX})',
      replace: 'std::int64_t{UINT32_MAX}',
    },
    {
      name: 'rows beyond 2^24 have a place on the map',
      find: 'bounds.bottom <= largest_whole',
      replace: 'bounds.bottom <= 4 * largest_whole',
    },
  ],

  'indexing/near_runs.cpp': [
    {
      name: 'a band above is not looked at',
      find: 'band_of(row - pairs_.row_tolerance)',
      replace: 'band_of(row)',
    },
    {
      name: 'a band below is not looked at',
      find: 'band_of(row + pairs_.row_tolerance)',
      replace: 'band_of(row)',
    },
    {
      name: 'a gap of one step is too wide between runs in bands',
      find: '>= -step',
      replace: '> -step',
    },
    {
      name: 'runs of a band touch however far their rows are apart',
      find: ' && pairs_.is_near(reference, run)',
      replace: '',
    },
    {
      name: 'runs are not sorted inside a band',
      find: 'std::tie(a.band, a.left_end, a.run) < std::tie(b.band, b.left_end, b.run)',
      replace: 'std::tie(a.band, a.run) < std::tie(b.band, b.run)',
    },
    {
      name: 'an infinite step is searched in bands',
      find: '  if (std::isinf(pairs_.step)) return false;  // reaches everywhere\n',
      replace: '',
    },
    {
      name: 'a search that gives up has found everything',
      find: 'if (looked_at++ == last - first) return false;',
      replace: 'if (looked_at++ == last - first) return true;',
    },
  ],

  'indexing/max_tree.hpp': [
    {
      name: 'a node that is too high is taken for the largest',
      find: 'level = is_right ? level - 1 : levels_.size() - 1;\n      i = is_right ? below :',
      replace: 'level = level - 1;\n      i = true ? below :',
    },
    {
      name: 'the last values of the list are left out of the tree',
      find: 'filled = (values.size() + fan_out - 1) / fan_out * fan_out;',
      replace: 'filled = std::max(fan_out, values.size() / fan_out * fan_out);',
    },
    {
      name: 'what is taken out is still found',
      find: 'levels_.front()[i] = value;',
      replace: 'static_cast<void>(value + levels_.front()[i]);',
    },
    {
      name: 'the search goes on behind the next node',
      find: 'i = end / fan_out;',
      replace: 'i = end / fan_out + 1;',
    },
    {
      name: 'eight values searched in vain are never searched again',
      find: '[i - 1] = largest_of(values, i - 1);',
      replace: '[i - 1] = none;',
    },
  ],

  'grouping/fission_algm.cpp': [
    {
      name: 'columns are filled as rows are',
      find: 'x_points, y_points, true)',
      replace: 'x_points, y_points)',
    },
    {
      name: 'a picture is filled whatever the step',
      find: 'if (!Pixel_flood::reaches_eight(side * 0.5)) return false;',
      replace: '',
    },
    {
      name: 'a box of two and a half steps',
      find: 'pixel_step * 3.0',
      replace: 'pixel_step * 2.5',
    },
  ],

  'indexing/point_flood.cpp': [
    {
      name: 'y is copied from x',
      find: 'group.add(point.x, point.y);',
      replace: 'group.add(point.x, point.x);',
    },
    {
      name: 'a group ends at the neighbours of its seed',
      find: 'sort(begin, end);\n    queued_ += ',
      replace: 'sort(begin, end);\n    if (head < 3) queued_ += ',
    },
    {
      name: 'points of a box come cell by cell',
      find: 'at > begin && at[-1] > number',
      replace: 'at > begin && at[-1] < 0',
    },
    {
      name: 'many points of a box come cell by cell',
      find: 'if (end - begin > 32) return std::sort(begin, end);',
      replace: 'if (end - begin > 32) return;',
    },
    {
      name: 'the cells on the right of a box are left out',
      find: 'const std::size_t last = cell + length;',
      replace: 'const std::size_t last = cell + 1;',
    },
    {
      name: 'a box ends with a row of cells',
      find: '} while (column <= right);',
      replace: '} while (false);',
    },
    {
      name: 'the cells on the lower edge of a box are left out',
      find: 'row <= high; ++row',
      replace: 'row < high; ++row',
    },
    {
      name: 'a seed that was taken meanwhile starts a group',
      find: '} while (!points_.free.is_free(seed));',
      replace: '} while (false);',
    },
    {
      name: 'the places of a crowd are those from before it was formed',
      find: 'place_of_[point.index] = place;',
      replace: '',
    },
    {
      name: 'the marks of a crowd are those from before it was formed',
      find: 'points_.marks[place] = parts_.mark_of(point.x, point.y);',
      replace: '',
    },
  ],

  'indexing/cell_parts.hpp': [
    {
      name: 'far cells left of zero are those right of it',
      find: 'return parts < 0 ? zero - part : zero + part;',
      replace: 'return zero + part;',
    },
    {
      name: 'a point in the last part of a window is outside',
      find: 'return {least(right - left), least(high - low)};',
      replace: 'return {least(right - left - (right > left)), least(high - low)};',
    },
    {
      name: 'only eight points are looked at',
      find: 'for (std::uint32_t k = 8; k < count; k += 8)',
      replace: 'for (std::uint32_t k = 8; k < count; k += 64)',
    },
    {
      name: 'the marks of four points are asked twice',
      find: 'are_near(marks + 4)',
      replace: 'are_near(marks)',
    },
  ],

  'indexing/free_places.hpp': [
    {
      name: 'the places of the second word are not free',
      find: 'word[0] >> shift | word[1] << 1 << (word_bits - 1 - shift)',
      replace: 'word[0] >> shift',
    },
    {
      name: 'places of the second word stay free',
      find: 'word[1] &= ~(bits >> 1 >> (word_bits - 1 - shift));',
      replace: '',
    },
  ],

  'indexing/loose_points.hpp': [
    {
      name: 'what may lie in the box does',
      find: 'if (!window.box.contains(point.x, point.y)) continue;',
      replace: '',
    },
    {
      name: 'points that are taken stay free',
      find: 'if (taken != 0) free.take(begin, taken);',
      replace: 'if (taken != 0) free.take(begin, taken & (taken - 1));',
    },
  ],

  'indexing/bits.hpp': [
    {
      name: 'half of the bits are counted',
      find: '0x0101010101010101U >> 56',
      replace: '0x0101010101010101U >> 57',
    },
    {
      name: 'the lowest bit is the one above it',
      find: 'return __builtin_ctzll(word);',
      replace:
        'return (word & (word - 1)) != 0 ? __builtin_ctzll(word & (word - 1)) : __builtin_ctzll(word);',
    },
    {
      name: 'only every other bit is counted',
      find: 'word -= word >> 1 & 0x5555555555555555U;',
      replace: 'word &= 0x5555555555555555U;',
    },
  ],

  'indexing/pixel_map.hpp': [
    {
      name: 'three pixels in two words are taken from the first alone',
      find: 'if (shift > word_bits - 3) return take(place, 7);',
      replace: 'if (shift > word_bits - 1) return take(place, 7);',
    },
    {
      name: 'rows in two words are taken from the first alone',
      find: 'if (in_word >> shift != mask) {',
      replace: 'if (mask == 0) {',
    },
    {
      name: 'the second word is not shifted into its place',
      find: 'word[1] << 1 << (word_bits - 1 - shift)',
      replace: 'word[1] << (word_bits - 1 - shift)',
    },
    {
      name: 'pixels are taken from the first of two words alone',
      find: '    word[1] &= ~(taken >> 1 >> (word_bits - 1 - shift));\n',
      replace: '',
    },
    {
      name: 'the pixels around are read past the end of a word',
      find: 'if (shift > word_bits - 3) return around_in_two_words(place);',
      replace: 'if (shift > word_bits - 1) return around_in_two_words(place);',
    },
  ],

  'indexing/pixel_map.cpp': [
    {
      name: 'columns left of 0 are packed',
      find: 'left_ >= -1.0 && ',
      replace: '',
    },
    {
      name: 'rows above 0 are packed',
      find: 'top_ >= -1.0 && ',
      replace: '',
    },
    {
      name: 'columns are packed however large',
      find: 'right <= 65536.0 && ',
      replace: '',
    },
    {
      name: 'two columns too many are packed',
      find: 'right <= 65536.0',
      replace: 'right <= 65538.0',
    },
    {
      name: 'columns just beside whole numbers are packed',
      find: 'left_ == std::floor(left_)',
      replace: 'left_ - std::floor(left_) < 0.01',
    },
    {
      name: 'a map may be twice as wide as packed pixels',
      find: 'stride > longest',
      replace: 'stride > 2 * longest',
    },
    {
      name: 'a map may be twice as high as packed pixels',
      find: 'height > longest',
      replace: 'height > 2 * longest',
    },
    {
      name: 'rows are packed however large',
      find: ' && bottom <= 65536.0',
      replace: '',
    },
    {
      name: 'columns between whole numbers are packed',
      find: 'left_ == std::floor(left_) && ',
      replace: '',
    },
    {
      name: 'rows between whole numbers are packed',
      find: ' && top_ == std::floor(top_)',
      replace: '',
    },
    {
      name: 'the sign of a zero at the start of a run is lost in a map',
      arch: 'x64',
      find: '_mm_xor_pd(rebuilt, point)',
      replace:
        '_mm_xor_pd(_mm_add_pd(rebuilt, _mm_setzero_pd()), _mm_add_pd(point, _mm_setzero_pd()))',
    },
    {
      name: 'the sign of a zero within a run is lost in a map',
      find: 'lose_nothing(zeros.first, zeros.second, top_)',
      replace: 'true',
    },
    {
      name: 'points of a run left of 0 are taken to be one apart',
      find: 'left_ + 1 < 0.0',
      replace: 'false',
    },
    {
      name: 'a map holds a pixel that comes twice',
      find: 'place < next',
      replace: 'place + 1 < next',
    },
    {
      name: 'a fraction of a pixel is cut off',
      arch: 'x64',
      find: 'lost_ = _mm_or_pd(lost_, _mm_xor_pd(rebuilt, point));',
      replace: '',
    },
    {
      name: 'a fraction of a pixel is cut off in any order',
      find: '  return steps_to.lost_nothing();\n',
      replace: '  return true;\n',
    },
    {
      name: 'a row that lies below the last one is painted behind the map',
      find: ' || place + length > end',
      replace: '',
    },
    {
      name: 'a pixel in the last of four words is passed over',
      find: 'words[0] | words[1] | words[2] | words[3]',
      replace: 'words[0] | words[1] | words[2]',
    },
    {
      name: 'a word between four and four is passed over on the way to the last pixel left',
      find: 'are_empty(words + from - at_once + 1)) from -= at_once;',
      replace: 'are_empty(words + from - at_once + 1)) from -= std::min(at_once + 1, from);',
    },
  ],

  'indexing/pixel_flood.hpp': [
    {
      name: 'a reach of a hair less than two is a map with eight neighbours',
      find: 'half <= 2.0 - 1.0 / 1024',
      replace: 'half <= 2.0',
    },
  ],

  'indexing/pixel_flood.cpp': [
    {
      name: 'a stretch takes row by row what lies in several',
      find: 'columns |= up_to_first(all) | before(above | own) | before(above | below) | before(own | below);',
      replace: 'columns |= up_to_first(all) | ~Word{0};',
    },
    {
      name: 'a stretch along a row is carried on downwards',
      find: 'last.length == 1 ? 1 : -last.length',
      replace: 'std::abs(last.length)',
    },
    {
      name: 'a long stretch forgets the column behind what is looked at as one',
      find: 'static_cast<std::int32_t>(word_bits) - 2;',
      replace: 'static_cast<std::int32_t>(word_bits) - 1;',
    },
    {
      name: 'the first pixel of a stretch takes two columns',
      find: 'Word columns = 7;',
      replace: 'Word columns = 3;',
    },
    {
      name: 'a stretch in hand grows',
      find: '      end_ != head_) {\n    last.length += length;',
      replace: '      true) {\n    last.length += length;',
    },
    {
      name: 'the stretch in hand leaves the queue',
      find: 'Stretch* const in_hand = head_ - 1;',
      replace: 'Stretch* const in_hand = head_;',
    },
    {
      name: 'a queue that grows turns round',
      find: '  room_end_ = queue_.data() + queue_.size();\n}\n\n// Writes',
      replace:
        '  room_end_ = queue_.data() + queue_.size();\n  if (queue_.size() > size) std::reverse(head_, end_);\n}\n\n// Writes',
    },
    {
      name: 'a queue never grows',
      find: 'queue_.resize(std::max(size, 2 * static_cast<std::size_t>(left)));',
      replace: 'queue_.resize(size);',
    },
    {
      name: 'stretches that wait are lost where the queue is full',
      find: '  end_ = queue_.data() + left;',
      replace: '  end_ = queue_.data() + 1;',
    },
    {
      name: 'stretches whose turn is over are dropped unwritten',
      find: '  write(in_hand);\n',
      replace: '',
    },
    {
      name: 'what is left of a line is written again',
      find: 'push({ends.second, 0});',
      replace: 'push({ends.second, 1});',
    },
    {
      name: 'a column on the border of a word is looked at in the first word alone',
      find: '  if (shift > word_bits - 3) {',
      replace: '  if (shift > word_bits - 1) {',
    },
    {
      name: 'a stretch down a column leaves what is beside it',
      find: 'if ((left & three) != 0) break;',
      replace: 'if ((left & pixels) != 0) break;',
    },
    {
      name: 'a stretch down a column ends a row early',
      find: 'static_cast<std::uint32_t>(height) + 2',
      replace: 'static_cast<std::uint32_t>(height) + 1',
    },
  ],

  'indexing/line_walk.cpp': [
    {
      name: 'the two ends of a line meet and go on',
      find: ' || next == other',
      replace: '',
    },
    {
      name: 'the second end of a line has its turn twice',
      find: '      std::swap(a, b);\n',
      replace: '',
    },
    {
      name: 'the last pixel of a line stays on the map',
      find: '  map.flip(a.place);\n  if (ends.has_second) map.flip(b.place);\n  points',
      replace: '  if (ends.has_second) map.flip(b.place);\n  points',
    },
  ],

  'indexing/shuffled_flood.cpp': [
    {
      name: 'a pixel that comes twice is one pixel',
      find: '  if (!is_clean) return {};\n',
      replace: '',
    },
    {
      name: 'pixels are numbered by bands',
      find: 'for (const Placed_pixel& pixel : banded) visit(pixel.place, pixel.index);',
      replace:
        'std::uint32_t index = 0;\n  for (const Placed_pixel& pixel : banded) visit(pixel.place, index++);',
    },
    {
      name: 'the last group is left out where it is one pixel',
      find: 'group.count() == places_.size()',
      replace: 'group.count() + 1 >= places_.size()',
    },
    {
      name: 'two neighbours are taken in reading order',
      find: 'if (queue_.size() - first > 1)',
      replace: 'if (queue_.size() - first > 2)',
    },
    {
      name: 'neighbours are taken in reading order',
      find: '  if (queue_.size() - first > 1) queue_in_order(first);\n',
      replace: '',
    },
    {
      name: 'a rank counts the pixel itself',
      find: '~(~Word{0} << place % word_bits)',
      replace: '~(~Word{1} << place % word_bits)',
    },
  ],

  'indexing/crowd.cpp': [
    {
      name: 'a crowd that only touches a box is passed over',
      find: 'a.left <= b.right',
      replace: 'a.left < b.right',
    },
    {
      name: 'what is left of a crowd after a box lies in its second half',
      find: '    node.bounds = nodes_[node.halves].bounds;\n',
      replace: '    node.bounds = nothing;\n',
    },
    {
      name: 'the points left in a leaf lie no further than its first sixty-four',
      find: 'place < node.end; place += leaf_size',
      replace: 'place < node.begin + 1; place += leaf_size',
    },
    {
      name: 'points at the middle of a crowd are in neither half',
      find: 'add_node(points, static_cast<std::uint32_t>(middle - points), node.end);',
      replace: 'add_node(points, static_cast<std::uint32_t>(middle - points) + 1, node.end);',
    },
  ],

  'grouping/group_by_method.cpp': [
    {
      name: 'x and y are exchanged',
      find: 'Fission_algm(std::move(x), std::move(y), pixel_step)',
      replace: 'Fission_algm(std::move(y), std::move(x), pixel_step)',
    },
    {
      name: 'every method that begins with fission is fission',
      find: 'method == "fission"',
      replace: 'method.compare(0, 7, "fission") == 0',
    },
    {
      name: 'unknown methods are fission',
      find: 'method == "fission"',
      replace: 'method != "horizontal"',
    },
  ],

  'grouping/horizontal_grouping_algm.cpp': [
    {
      name: 'the row tolerance is one step',
      find: 'pixel_step * 1.5',
      replace: 'pixel_step * 1.0',
    },
    {
      name: 'the runs that joined last are searched from first',
      find: 'take_touching(joined_[next], true, joined_)',
      replace: 'take_touching(joined_[joined_.size() - 1], true, joined_)',
    },
    {
      name: 'runs still waiting at the end of the list are searched from',
      find: 'for (++next; stopped && next < joined_.size(); ++next) {',
      replace: 'for (++next; (stopped || true) && next < joined_.size(); ++next) {',
    },
    {
      name: 'the first run after a change of reference can change it again',
      find: 'take_touching(joined_[next], true, joined_)',
      replace: 'take_touching(joined_[next], false, joined_)',
    },
    {
      name: 'the first reference is followed by an exempt run',
      find: 'bool stopped = runs.take_touching(joined_[next], false, joined_);',
      replace: 'bool stopped = runs.take_touching(joined_[next], true, joined_);',
    },
    {
      name: 'a run ends where it begins',
      find: 'static_cast<float>(x[last - 1])',
      replace: 'static_cast<float>(x[first])',
    },
    {
      name: 'a long run is gathered without its last point',
      find: 'to = std::copy_n(from, count, to);',
      replace: 'to = std::copy_n(from, count - 1, to) + 1;',
    },
    {
      name: 'a bitmap is asked whatever the step',
      find: 'pixel_step != 1.0 || count_of(x_points) < 1',
      replace: 'count_of(x_points) < 1',
    },
    {
      name: 'a bitmap is asked whatever single precision makes of its columns',
      find: '!map || !Run_flood::holds_exactly(*map)',
      replace: '!map',
    },
  ],

  'primitives/groups.hpp': [
    {
      name: 'every group but the first begins a point late',
      find: 'ends_[k - 1]; }',
      replace: 'ends_[k - 1] + 1; }',
    },
    {
      name: 'a group has as many points as end before it',
      find: 'return ends_[k] - begin_of(k);',
      replace: 'return ends_[k];',
    },
  ],

  'indexing/range.hpp': [
    {
      name: 'every third value is left out',
      find: '_mm_loadu_pd(four + 2)',
      replace: '_mm_loadu_pd(four + 1)',
    },
    {
      name: 'two values of four do not count to a range',
      find: '_mm_max_pd(high_too_, high_)',
      replace: 'high_',
    },
    {
      name: 'every second value does not count to a range',
      find: '    range.include(_mm_cvtsd_f64(_mm_unpackhi_pd(low, low)));\n',
      replace: '',
    },
    {
      name: 'a NaN is the smallest of two values and more',
      find: 'low_ = _mm_min_pd(two, low_);',
      replace: 'low_ = _mm_min_pd(low_, two);',
    },
    {
      name: 'the last few values do not count to a range',
      find: '  for (; i < count; ++i) range.include(values[i]);\n',
      replace: '',
    },
  ],

  'indexing/packed_pixels.cpp': [
    {
      name: 'the sums of many pixels leave 32 bits',
      arch: 'x64',
      find: 'most_summed = at_once << 16;',
      replace: 'most_summed = at_once << 17;',
    },
    {
      name: 'rows are summed with their columns',
      arch: 'x64',
      find: 'rows_ = _mm_add_epi32(rows_, _mm_srli_epi32(four, 16));',
      replace: 'rows_ = _mm_add_epi32(rows_, four);',
    },
    {
      name: 'the last few pixels are not in the sums',
      find: '    totals.rows += row_of(pixels[i]);\n',
      replace: '',
    },
    {
      name: 'a fourth of the pixels is not in the sums',
      arch: 'x64',
      find: 'std::uint64_t{parts[0]} + parts[1] + parts[2] + parts[3]',
      replace: 'std::uint64_t{parts[0]} + parts[1] + parts[2]',
    },
    {
      name: 'a fraction is cut off',
      find: '_mm_or_si128(too_large, _mm_or_si128(xs.differences, ys.differences))',
      replace: '_mm_or_si128(too_large, xs.differences)',
    },
    {
      name: 'a zero loses its sign',
      find: '_mm_xor_pd(low, _mm_cvtepi32_pd(low_numbers))',
      replace: '_mm_cmpneq_pd(low, _mm_cvtepi32_pd(low_numbers))',
    },
    {
      name: 'a large column runs into the row',
      find: '_mm_srli_epi32(_mm_or_si128(xs.numbers, ys.numbers), 16)',
      replace: '_mm_srli_epi32(ys.numbers, 16)',
    },
    {
      name: 'the last few pixels are not in the frame',
      find: '    frame.include(pixels[i]);\n  }\n  return',
      replace: '  }\n  return',
    },
    {
      name: 'the frame is that of the first of four places',
      find: 'for (const Packed_pixel pixel : outermost) frame.include(pixel);',
      replace: 'for (std::size_t k = 0; k < 8; k += 4) frame.include(outermost[k]);',
      arch: 'x64',
    },
    {
      name: 'columns from 32768 on are below 0',
      find: '_mm_add_epi16(high_, _mm_subs_epu16(four, high_))',
      replace: '_mm_max_epi16(four, high_)',
      arch: 'x64',
    },
    {
      name: 'one of the last few zeros loses its sign',
      find: 'bits_of(value) <= bits_of(65535.0)',
      replace: 'value >= 0.0 && value <= 65535.0',
    },
  ],

  'indexing/pixel_writer.hpp': [
    {
      name: 'the columns of a turned map are columns',
      find: 'along_(is_turned ? &downwards : &rightwards)',
      replace: 'along_(&rightwards)',
    },
    {
      name: 'the rows of a turned map are rows',
      find: 'down_(is_turned ? &rightwards : &downwards)',
      replace: 'down_(&downwards)',
    },
    {
      name: 'packed pixels begin at the corner of the map',
      find: 'origin_(origin)',
      replace: 'origin_(0)',
    },
    {
      name: 'a long stretch is written over and over from its first pixel',
      arch: 'x64',
      find: 'place += block, pixels = _mm_add_epi32(pixels, to_next)',
      replace: 'place += block',
    },
    {
      name: 'more pixels are kept of a stretch than it has',
      find: 'next_ += length;',
      replace: 'next_ += (length + block - 1) / block * block;',
    },
    {
      name: 'pixels one below the other are written side by side',
      find: 'add_blocks(pixel_at(place), *down_, length)',
      replace: 'add_blocks(pixel_at(place), *along_, length)',
    },
    {
      name: 'a line that is turned is followed as if it were not',
      find: 'to_neighbours_(is_turned ? turned.data() : upright.data())',
      replace: 'to_neighbours_(upright.data())',
    },
    {
      name: 'the neighbours before and behind a pixel are mixed up',
      find: 'packed(-1, 0),  packed(0, 0),  packed(1, 0),   // beside',
      replace: 'packed(1, 0),  packed(0, 0),  packed(-1, 0),   // beside',
    },
    {
      name: 'two neighbours of a turned pixel are mixed up',
      find: 'packed(0, -1),  packed(0, 0),  packed(0, 1),   // beside',
      replace: 'packed(0, 1),  packed(0, 0),  packed(0, -1),   // beside',
    },
  ],

  'grouping/picture_groups.hpp': [
    {
      name: 'whatever is on a map stays packed',
      find: 'const bool stay_packed = map.holds_packed();',
      replace: 'const bool stay_packed = true;',
    },
    {
      name: 'a turned map lies where it would lie if it were not',
      find: 'is_turned ? map.top() : map.left()',
      replace: 'map.left()',
    },
    {
      name: 'pixels that become points again are moved to the right alone',
      find: '  for (double& value : y) value += top;\n',
      replace: '',
    },
    {
      name: 'pixels that become points again stay where they lie on the map',
      find: '  for (double& value : x) value += left;\n',
      replace: '',
    },
    {
      name: 'a turned map is written as if it were not',
      find: 'Pixel_writer(map, origin, is_turned, pixels.data())',
      replace: 'Pixel_writer(map, origin, false, pixels.data())',
    },
  ],

  'grouping/vertical_compartments.cpp': [
    {
      name: 'the second of four points goes in before the first',
      find: '    move(i, first);\n    move(i + 1, second);\n',
      replace: '    move(i, second);\n    move(i + 1, first);\n',
    },
    {
      name: 'the last few points are left out',
      find: '  for (; i < size; ++i) move(i, places[compartment_of(i)]++);\n',
      replace: '',
    },
    {
      name: 'the points that are left over make a group',
      find: '  ends.pop_back();\n',
      replace: '',
    },
    {
      name: 'pixels are unpacked as they came',
      find: 'sorted.unpack(x, y);',
      replace: 'pixels.unpack(x, y);',
    },
  ],

  'grouping/compartment_borders.cpp': [
    {
      name: 'borders are multiples of the width',
      find: 'right_.push_back(width + border);\n    if (!(right_.back() > border)) break;\n    border = right_.back();\n  } while',
      replace:
        'right_.push_back(left + static_cast<double>(right_.size()) * width);\n    if (!(right_.back() > border)) break;\n    border = right_.back();\n  } while',
    },
    {
      name: 'points left over make no compartment behind the last border',
      find: '(border == last && beyond));\n  total_',
      replace: '(border == last && beyond && width < 0.0));\n  total_',
    },
    {
      name: 'a border that does not move goes on',
      find: 'if (!(right_.back() > border)) break;\n    border = right_.back();\n  } while',
      replace: 'if (right_.back() < border) break;\n    border = right_.back();\n  } while',
    },
    {
      name: 'a gap reaches as far as the compartment behind it',
      find: 'if (gap > 0) right_.push_back(border);',
      replace: '',
    },
    {
      name: 'a gap takes a point on its right border from the compartment behind it',
      find: 'right < x && right > border',
      replace: 'right <= x && right > border',
    },
    {
      name: 'a gap is passed over borders that do not move',
      find: 'right < x && right > border',
      replace: 'right < x',
    },
    {
      name: 'a gap counts as one compartment',
      find: 'total_ += gap + 1;',
      replace: 'total_ += (gap > 0 ? 2 : 1);',
    },
    {
      name: 'points left over make no compartment behind the last of few points',
      find: '(border == last && beyond));\n}',
      replace: '(border == last && beyond && width < 0.0));\n}',
    },
    {
      name: 'the search puts a point on a border to the right of it',
      find: 'return !(x <= right);',
      replace: 'return !(x < right);',
    },
  ],

  'grouping/compartment_borders.hpp': [
    {
      name: 'a proposed compartment takes points left of it',
      find: 'return !(x <= left) && x <= right;',
      replace: 'return x <= right;',
    },
    {
      name: 'a proposed compartment takes points right of it',
      find: 'return !(x <= left) && x <= right;',
      replace: 'return !(x <= left);',
    },
    {
      name: 'the proposed compartment is taken without a look at its borders',
      find: 'if (interval(k).holds(x)) return k;',
      replace: 'return k;',
    },
    {
      name: 'a point on the right border belongs to the right',
      find: 'return !(x <= left) && x <= right;',
      replace: 'return !(x < left) && x < right;',
    },
  ],

  'grouping/compartment_index.cpp': [
    {
      name: 'a NaN as first x is the left of a compartment',
      find: 'if (x.empty() || std::isnan(x[0])) return;',
      replace: 'if (x.empty()) return;',
    },
    {
      name: 'points left over make the compartments reach no farther',
      find: 'const bool beyond = !pixels_ && holds_nan(x, y);',
      replace: 'const bool beyond = false;',
    },
    {
      name: 'few points in many compartments need not be in order',
      find: '  std::sort(numbers.begin(), numbers.end());\n',
      replace: '',
    },
    {
      name: 'a NaN is a point that compartments are kept for',
      find: 'return !std::isnan(value); }',
      replace: 'return true || std::isnan(value); }',
    },
    {
      name: 'a NaN as first y takes points all the same',
      find: 'takes_any_ = !std::isnan(y[0]);',
      replace: 'takes_any_ = true;',
    },
    {
      name: 'a column is looked up farther right than it is',
      find: 'borders_.compartment_at(static_cast<double>(column))',
      replace: 'borders_.compartment_at(static_cast<double>(column) + range.low)',
    },
  ],

  'grouping/compartment_index.hpp': [
    {
      name: 'a stretch of pixels goes on into the next column',
      find: 'end < size && column_of(pixels[end]) == column;',
      replace: 'end < size && column_of(pixels[end]) <= column;',
    },
    {
      name: 'a stretch goes on into the next column',
      find: 'x[end] == x[begin] && !std::isnan(y[end])',
      replace: '!std::isnan(y[end])',
    },
    {
      name: 'a stretch may begin with a NaN',
      find: 'if (std::isnan(y[begin])) {',
      replace: 'if (begin == size) {',
    },
    {
      name: 'a stretch goes on over a NaN',
      find: 'x[end] == x[begin] && !std::isnan(y[end])',
      replace: 'x[end] == x[begin]',
    },
    {
      name: 'a riser holds points with a NaN',
      find: 'in_left.holds(x[i]) && !std::isnan(y[i])',
      replace: 'in_left.holds(x[i])',
    },
  ],

  'extractors/points_curves_algm.cpp': [
    {
      name: 'markers and curves are mixed up',
      find: 'if (!chart_trace::is_solid_filled(',
      replace: 'if (chart_trace::is_solid_filled(',
    },
    {
      name: 'the cell size is always 1',
      find: 'groups_.count(group), pixel_step)',
      replace: 'groups_.count(group), 1.0)',
    },
    {
      name: 'every group is as large as the first',
      find: 'groups_.count(group), pixel_step)',
      replace: 'groups_.count(0), pixel_step)',
    },
    {
      name: 'the curve is not added to points and curve',
      find: 'append(x_points_curves, x_curves);',
      replace: '',
    },
    {
      name: 'a cluster takes next to nothing whatever the fraction',
      find: 'Cluster_algm clusters(std::move(points), cluster_fraction);',
      replace: 'Cluster_algm clusters(std::move(points), 1e-9);',
    },
    {
      name: 'the height of a marker is that of its top',
      find: 'y_centres.push_back(figures.mean_y);',
      replace: 'y_centres.push_back(figures.y.min);',
    },
    {
      name: 'the thinning knows one code alone',
      find: 'std::move(centroids.y), cluster_fraction);',
      replace: 'std::move(centroids.y), 0.05);',
    },
  ],

  'extractors/bar_algm.cpp': [
    {
      name: 'a vertical bar ends at its largest y',
      find: 'figures.y.min',
      replace: 'figures.y.max',
    },
    {
      name: 'a horizontal bar ends at its smallest x',
      find: 'figures.x.max',
      replace: 'figures.x.min',
    },
    {
      name: 'the middle is that of the extremes and not the mean',
      find: 'x_vertical.push_back(figures.mean_x);',
      replace: 'x_vertical.push_back((figures.x.min + figures.x.max) * 0.5);',
    },
    {
      name: 'x and y of a horizontal bar are mixed up',
      find: 'y_horizontal.push_back(figures.mean_y);',
      replace: 'y_horizontal.push_back(figures.mean_x);',
    },
  ],

  'extractors/height_changes.cpp': [
    {
      name: 'the sum of changes lets rises and falls cancel out',
      find: 'total_ += std::fabs(to - from);',
      replace: 'total_ += to - from;',
    },
    {
      name: 'multiplied by 100 before it is divided',
      find: '(to - from) / total_ * 100.0',
      replace: '(to - from) * 100.0 / total_',
    },
    {
      name: 'exactly half a percent is a jump',
      find: 'std::fabs(percent) > 0.5',
      replace: 'std::fabs(percent) >= 0.5',
    },
    {
      name: 'a fall is no jump',
      find: 'return std::fabs(percent) > 0.5;',
      replace: 'return percent > 0.5;',
    },
    {
      name: 'a NaN share is a jump',
      find: 'return std::fabs(percent) > 0.5;',
      replace: 'return !(std::fabs(percent) <= 0.5);',
    },
    {
      name: 'half a percent in single precision',
      find: 'const double percent =',
      replace: 'const float percent =',
    },
  ],

  'extractors/histogram_algm.cpp': [
    {
      name: 'the top is the largest y',
      find: 'if (!(top.y <= point.y))',
      replace: 'if (!(top.y >= point.y))',
    },
    {
      name: 'the last of equal tops is taken',
      find: 'if (!(top.y <= point.y))',
      replace: 'if (!(top.y < point.y))',
    },
    {
      name: 'the x of a top is that of the first pixel of its compartment',
      find: 'top = point;',
      replace: 'top = {std::isnan(top.y) ? point.x : top.x, point.y};',
    },
    {
      name: 'an empty compartment ends the histogram',
      find: 'std::remove_if(tops.begin(), tops.end(),',
      replace: 'std::find_if(tops.begin(), tops.end(),',
    },
    {
      name: 'the x of a bar is the mean of its tops',
      find: 'x_hist.push_back((left + right) * 0.5);',
      replace: 'x_hist.push_back(chart_trace::mean_of(bar_x) + 0.0 * (left + right));',
    },
    {
      name: 'the height of a bar is that of its first top',
      find: 'y_hist.push_back(chart_trace::mean_of(bar_y));',
      replace: 'y_hist.push_back(bar_y.front());',
    },
    {
      name: 'the heights of the bar before are kept',
      find: '      bar_y.clear();\n',
      replace: '',
    },
    {
      name: 'the last bar is not closed',
      find: '  close_bar(bar_x, bar_y);\n}\n\nvoid',
      replace: '}\n\nvoid',
    },
  ],

  'extractors/step_size_graph_algm.cpp': [
    {
      name: 'the factor is 1.2 and not the float a little above it',
      find: 'static_cast<double>(1.2F)',
      replace: '1.2',
    },
    {
      name: 'the threshold is rounded down',
      find: 'std::ceil(mean ',
      replace: 'std::floor(mean ',
    },
    {
      name: 'as many points as the threshold are a tread',
      find: 'all[k].size >= riser_size',
      replace: 'all[k].size > riser_size',
    },
    {
      name: 'the mean of no points is a division of zeros',
      find: 'if (size == 0) return std::numeric_limits<double>::quiet_NaN();',
      replace: '',
    },
    {
      name: 'empty compartments do not count to the mean',
      find: 'const double mean = points / static_cast<std::int32_t>(count);',
      replace:
        'double full = 0.0;\n  for (const auto& each : compartments) full += each.size > 0 ? 1.0 : 0.0;\n  const double mean = points / full;',
    },
    {
      name: 'the height of a step is that of its last centre',
      find: 'steps.back().last_x = centre.x;',
      replace: 'steps.back().last_x = centre.x;\n    steps.back().height = centre.y;',
    },
    {
      name: 'equally far both ways is the largest y',
      find: 'std::fabs(riser.max - height) > std::fabs(riser.min - height)',
      replace: 'std::fabs(riser.max - height) >= std::fabs(riser.min - height)',
    },
    {
      name: 'the far end is found without absolute values',
      find: 'std::fabs(riser.max - height) > std::fabs(riser.min - height)',
      replace: 'riser.max - height > riser.min - height',
    },
    {
      name: 'a riser exactly at the first centre does not start the line',
      find: 'if (!(tread_x >= riser_x)) {',
      replace: 'if (!(tread_x > riser_x)) {',
    },
    {
      name: 'a NaN centre starts the line at the riser',
      find: 'if (!(tread_x >= riser_x)) {',
      replace: 'if (tread_x < riser_x) {',
    },
    {
      name: 'the first riser stands at its leftmost point',
      find: '      first_x_ = point.x;\n',
      replace:
        '      first_x_ = point.x;\n    } else if (point.x < first_x_) {\n      first_x_ = point.x;\n',
    },
    {
      name: 'a riser exactly at the last centre does not end the line',
      find: 'if (last_riser.first_x() >= tread_x) {',
      replace: 'if (last_riser.first_x() > tread_x) {',
    },
    {
      name: 'the end stands halfway to the first point of the last riser',
      find: '(last_riser.mean_x() + tread_x) * 0.5',
      replace: '(last_riser.first_x() + tread_x) * 0.5',
    },
    {
      name: 'the end takes the far end always, as the start does',
      find: 'if (largest_y_is_far_end(ends, last_step.height)) y.push_back(ends.max);',
      replace: 'y.push_back(largest_y_is_far_end(ends, last_step.height) ? ends.max : ends.min);',
    },
    {
      name: 'a riser left of the last centre adds its far end',
      find: '      x.push_back(tread_x);\n      y.push_back(ends.min);',
      replace:
        '      x.push_back(tread_x);\n      y.push_back(largest_y_is_far_end(ends, last_step.height) ? ends.max : ends.min);',
    },
    {
      name: 'the end has one x, as long as y',
      find: '      x.push_back(end);\n      x.push_back(end);',
      replace: '      x.push_back(end);',
    },
    {
      name: 'a riser stands at the end of the step before it',
      find: '(before.last_x + after.first_x) * 0.5',
      replace: 'before.last_x',
    },
    {
      name: 'a step ends at its first centre',
      find: 'steps.back().last_x = centre.x;',
      replace: '',
    },
    {
      name: 'changes are those from the first height',
      find: 'if (before) changes.add(*before, centre.y);\n    before = centre.y;',
      replace: 'if (before) changes.add(*before, centre.y);\n    if (!before) before = centre.y;',
    },
    {
      name: 'the last riser is the first',
      find: 'line.add_end(risers->last, steps.back());',
      replace: 'line.add_end(risers->first, steps.back());',
    },
    {
      name: 'the only riser is not the last one',
      find: 'if (first == last) risers.last = risers.first;',
      replace: '',
    },
    {
      name: 'the largest y of a riser is 0 at least',
      find: 'y_ends_ = {point.y, point.y};',
      replace: 'y_ends_ = {point.y, 0.0};',
    },
    {
      name: 'without a riser the line is drawn all the same',
      find: 'if (first == last) return std::nullopt;',
      replace: 'if (first == last) return Outermost_risers{};',
    },
  ],

  'dispatch/autotrace.cpp': [
    {
      name: 'a mode matches by its beginning',
      find: 'if (row.mode != this->mode) continue;',
      replace: 'if (this->mode.substr(0, row.mode.size()) != row.mode) continue;',
    },
    {
      name: 'two modes are swapped',
      find: '{"points-horizontal", points_curves<horizontal,',
      replace: '{"points-horizontal", points_curves<fission,',
    },
    {
      name: 'curves come with the points',
      find: '{"curves-fission", points_curves<fission, &Points::x_get_curves, &Points::y_get_curves>}',
      replace:
        '{"curves-fission", points_curves<fission, &Points::x_get_points_curves, &Points::y_get_points_curves>}',
    },
    {
      name: 'a horizontal bar is read as a vertical one',
      find: '{"bar_horizontal-fission", bars<fission, &Bars::x_horizontal_bar, &Bars::y_horizontal_bar>}',
      replace:
        '{"bar_horizontal-fission", bars<fission, &Bars::x_vertical_bar, &Bars::y_horizontal_bar>}',
    },
    {
      name: 'the pixel step and the fraction are swapped for points and curves',
      find: 'in.pixel_step, method, in.cluster_fraction);',
      replace: 'in.cluster_fraction, method, in.pixel_step);',
    },
    {
      name: 'the clustering is given the pixel step',
      find: 'Cluster_algm clusters(std::move(in.x), std::move(in.y), in.cluster_fraction);',
      replace: 'Cluster_algm clusters(std::move(in.x), std::move(in.y), in.pixel_step);',
    },
    {
      name: 'the histogram is given a width of 1',
      find: 'const Histogram_algm traced(std::move(in.x), std::move(in.y), in.pixel_step);',
      replace: 'const Histogram_algm traced(std::move(in.x), std::move(in.y), 1.0);',
    },
  ],

  'primitives/groups.cpp': [
    {
      name: 'the last group is left out',
      find: 'for (std::size_t k = 0; k < size(); ++k)',
      replace: 'for (std::size_t k = 0; k + 1 < size(); ++k)',
    },
    {
      name: 'the y coordinates of packed groups are their x coordinates',
      find: 'copies(points_.y, row_of)',
      replace: 'copies(points_.y, column_of)',
    },
    {
      name: 'the points of every group are those of the first',
      find: 'points_.pixels->data() + begin_of(k);',
      replace: 'points_.pixels->data();',
    },
    {
      name: 'joined pixels keep those behind them',
      find: 'points_.pixels->shrink(move_to_front(points_.pixels->data(), ends_, kept));',
      replace: 'move_to_front(points_.pixels->data(), ends_, kept);',
    },
    {
      name: 'the y coordinates stay behind when groups are joined',
      find: 'points_.y.resize(move_to_front(points_.y.data(), ends_, kept));',
      replace: 'points_.y.resize(points_.x.size());',
    },
    {
      name: 'groups that are joined begin where the one before begins',
      find: '(k == 0 ? 0 : ends[k - 1])',
      replace: '(k < 2 ? 0 : ends[k - 2])',
    },
    {
      name: 'the figures of packed pixels are those from the first one on',
      find: 'points_.pixels->data() + begin, end - begin',
      replace: 'points_.pixels->data(), end - begin',
    },
    {
      name: 'the middle of a packed group is that of its frame',
      find: 'return {mean_of(totals.columns),',
      replace: 'return {(frame.left + frame.right) * 0.5,',
    },
  ],

  't.cpp': [
    {
      name: 'a count is rounded down',
      find: 'const double rounded_up = std::ceil(count);\n  if',
      replace: 'const double rounded_up = std::floor(count);\n  if',
    },
    {
      name: 'typed arrays that are too short are read past their end',
      find: 'rounded_up <= static_cast<double>(std::min(x.length, y.length))',
      replace: 'rounded_up <= static_cast<double>(std::max(x.length, y.length))',
    },
    {
      name: 'bytes have a sign',
      find: 'numbers = converted<std::uint8_t>(array.data, count);',
      replace: 'numbers = converted<std::int8_t>(array.data, count);',
    },
    {
      name: 'floats are taken for integers',
      find: 'numbers = converted<float>(array.data, count);',
      replace: 'numbers = converted<std::int32_t>(array.data, count);',
    },
    {
      name: 'y is read before x',
      find: 'succeeded(env, napi_get_element(env, x_values, i, &x_element)) &&\n                    succeeded(env, napi_get_element(env, y_values, i, &y_element))',
      replace:
        'succeeded(env, napi_get_element(env, y_values, i, &y_element)) &&\n                    succeeded(env, napi_get_element(env, x_values, i, &x_element))',
    },
    {
      name: 'in a stretch x is checked before y is fetched',
      find: 'const a = x[i];',
      replace: "const a = x[i]; if (typeof a !== 'number') return i;",
    },
    {
      name: 'in a stretch texts are taken for numbers',
      find: "typeof b !== 'number'",
      replace: "typeof b === 'undefined'",
    },
    {
      name: 'a getter that calls trace() writes over its caller',
      find: 'return is_usable_ && !is_busy_;',
      replace: 'return is_usable_;',
    },
    {
      name: 'a getter finds the loop as its caller',
      find: '"\'use strict\';"\n',
      replace: '',
    },
    {
      name: 'a stretch is a number too long',
      find: 'x_, x_ + count)',
      replace: 'x_, x_ + count + 1)',
    },
    {
      name: 'the second stretch begins one too late',
      find: 'first = last;',
      replace: 'first = last + 1;',
    },
    {
      name: 'what the computation throws reaches the host',
      find: '} catch (const std::exception& failure) {\n  Napi::RangeError',
      replace: '} catch (const std::invalid_argument& failure) {\n  Napi::RangeError',
    },
    {
      name: 'the mode is read before the step',
      find: 'read_number(env, info[3], pixel_step) &&\n                    read_text(env, info[4], mode)',
      replace:
        'read_text(env, info[4], mode) &&\n                    read_number(env, info[3], pixel_step)',
    },
    {
      name: 'y comes before x',
      find: 'std::vector<double> result = traced.x_autotrace_func();\n  const std::vector<double> y_result = traced.y_autotrace_func();',
      replace:
        'std::vector<double> result = traced.y_autotrace_func();\n  const std::vector<double> y_result = traced.x_autotrace_func();',
    },
    {
      name: 'the module has another name',
      find: '"cpp_code", nullptr',
      replace: '"cpp-code", nullptr',
    },
  ],
};
