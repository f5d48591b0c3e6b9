// Scrolls a target view: its value is the coordinate at the target's left or top edge.
#pragma once

#include "View.h"

class BScrollBar : public BView {
public:
    BScrollBar(
        BRect frame, const char* name, BView* target, float min, float max, orientation direction);
    ~BScrollBar() override;

    virtual void SetValue(float value); // cut to the range; scrolls the target
    float Value() const { return fValue; }
    void SetRange(float min, float max); // the value is cut to it
    void GetRange(float* min, float* max) const;
    void SetProportion(float proportion); // visible part of the whole: 0 to 1
    float Proportion() const { return fProportion; }
    void SetSteps(float smallStep, float largeStep); // of arrows and wheel, and of the trough
    void GetSteps(float* smallStep, float* largeStep) const;
    orientation Orientation() const { return fOrientation; }
    void SetTarget(BView* target); // null: none
    BView* Target() const { return fTarget; }

    // The value has changed, by the program or the user. The base scrolls the target.
    virtual void ValueChanged(float newValue);

protected:
    void MakeWidget(ViewPeer& peer) override;
    void WidgetChanged(BMessage* report) override;

private:
    friend class BTextView;
    friend class BView;

    void ShowState();
    void ShowStateIn(ViewPeer& peer);

    orientation fOrientation;
    BView* fTarget = nullptr;
    float fMin;
    float fMax;
    float fValue;
    float fProportion = 0;
    float fSmallStep = 1;
    float fLargeStep = 10;
    float fShownValue; // what the widget shows, by its last report
};
