#pragma once

class FltRecord;

/// Somebody who wants to hear of every @p Subject.
template <class Subject>
class FltObserver
{
public:
    virtual void update(Subject const* subject) = 0;
    virtual ~FltObserver() = default;
};

/// Hears of every record that the parser makes.
class FltRecordObserver : public FltObserver<FltRecord>
{
};

/// Somebody who tells observers of every @p Subject. Observers are not owned.
template <class Subject, class Observer>
class FltObservable
{
public:
    virtual void attachFltObserver(Observer* observer) = 0;
    virtual void detachFltObserver(Observer* observer) = 0;
    virtual void notify(Subject const* subject) = 0;

protected:
    ~FltObservable() = default;
};

/// Tells of records.
class FltRecordObservable : public FltObservable<FltRecord, FltRecordObserver>
{
protected:
    ~FltRecordObservable() = default;
};
