#pragma once
// Gives the typed columns of a CSV file their roles once the whole file is
// read: which column is x (or the row number, or a date made of year, month
// and day columns), which splits the rows into groups, which are series; and
// makes the series, aggregating categories that repeat.

#include "CsvColumns_p.h"

#include <set>

namespace Orv::Chart {

class CsvRoles {
public:
    CsvRoles(const QString& path, const CsvOptions& options, std::vector<TypedColumn>& columns, std::size_t rows);

    DataSet assign(qint64 headerLine);

private:
    static constexpr int rowNumber = -1;

    void skipEmptyColumns();
    void combineDateParts();
    void chooseX();
    bool keepsNumericX(std::size_t index);
    void chooseGroup();
    void chooseYs();
    void fallBackToRowNumber(qint64 headerLine);

    DataColumn xColumn(DataSet& data);
    std::vector<std::vector<std::size_t>> rowsOfGroups() const;
    bool xRepeats(const std::vector<std::size_t>* rows) const;
    bool xOrdered(const std::vector<std::size_t>& rows) const;
    bool xScattered(const std::vector<std::size_t>& rows) const;
    void addSeries(DataSet& data, DataColumn& x, const std::vector<std::size_t>& rows, const QString& group);
    void addWholeFile(DataSet& data, DataColumn x);
    DataSeries aggregated(const DataColumn& x, const DataColumn& y, const std::vector<std::size_t>& rows,
                          const QString& name) const;
    SeriesShape shapeOf(const DataSet& data, const std::vector<std::vector<std::size_t>>& groups) const;

    int columnNamed(const QString& option, const QString& name) const;
    const TypedColumn& column(int index) const { return m_columns[static_cast<std::size_t>(index)]; }
    std::vector<std::size_t> allRows() const;

    QString m_path;
    CsvOptions m_options;
    std::vector<TypedColumn>& m_columns;
    std::size_t m_rows;
    std::set<std::size_t> m_skipped;
    int m_x = rowNumber;
    int m_group = -1;
    std::vector<std::size_t> m_ys;
    bool m_aggregated = false;
    QStringList m_notes;
};

} // namespace Orv::Chart
